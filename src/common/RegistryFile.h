#pragma once

#include <map>
#include <string>
#include <vector>

#include "MachineRegistry.h"

namespace mirvalde {

// A read-only registry read from a file in the registry-export format:
//
//   Windows Registry Editor Version 5.00
//
//   [HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Shared Tools\MSINFO]
//   "PATH"="/usr/bin/hardinfo"
//   "Count"=dword:0000002a
//   "Raw"=hex(2):2f,00
//
// Key and value names are compared without regard to case. A line that cannot be read is
// passed over: the lookups it would have answered fail. No file, no registry. The file may be
// UTF-8 or, as the Windows registry editor saves it, UTF-16 with a byte-order mark.
class RegistryFile final : public MachineRegistry {
  public:
    explicit RegistryFile(const std::string& path);
    static RegistryFile FromText(const std::string& text);
    // The registry of the system configuration folders, read again at each lookup, so that a
    // file written or mended while the game runs counts at once.
    static RegistryFile System();

    long RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t options,
                      std::uint32_t access, Key& opened) override;
    long RegQueryValueEx(Key key, const std::string& valueName, std::uint32_t& type, char* data,
                         std::uint32_t& size) override;
    long RegCloseKey(Key key) override;

    // The first mirvalde/registry.reg in $XDG_CONFIG_DIRS (/etc/xdg when unset), or "".
    static std::string SystemPath();

  private:
    RegistryFile() = default;
    void Read(const std::string& path);
    void Parse(std::string text);

    struct Value {
        std::uint32_t type;
        std::string data;
    };
    // Keys by their full name in upper case ("HKEY_LOCAL_MACHINE\SOFTWARE\..."), values by
    // their name in upper case.
    std::map<std::string, std::map<std::string, Value>> keys_;
    std::vector<const std::map<std::string, Value>*> open_;
    bool system_ = false;
};

}  // namespace mirvalde
