#pragma once

#include <cstdint>
#include <string>

namespace mirvalde {

// The machine's registry, read only, with the calls and the result codes of the Windows one:
// 0 for success, anything else for a failure.
class MachineRegistry {
  public:
    using Key = std::uintptr_t;
    static constexpr Key HKEY_LOCAL_MACHINE = 0x80000002;
    static constexpr std::uint32_t REG_SZ = 1;
    static constexpr std::uint32_t REG_DWORD = 4;
    static constexpr long ERROR_SUCCESS = 0;
    static constexpr long ERROR_FILE_NOT_FOUND = 2;
    static constexpr long ERROR_MORE_DATA = 234;

    virtual ~MachineRegistry() = default;
    virtual long RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t options,
                              std::uint32_t access, Key& opened) = 0;
    // Copies the value's data into `data` (room for `size` bytes) and sets `size` to its
    // length; a value larger than the room is ERROR_MORE_DATA.
    virtual long RegQueryValueEx(Key key, const std::string& valueName, std::uint32_t& type,
                                 char* data, std::uint32_t& size) = 0;
    virtual long RegCloseKey(Key key) = 0;
};

// The registry of this machine: the Windows one on Windows; elsewhere a registry file in the
// registry-export format, mirvalde/registry.reg in the system configuration folders.
MachineRegistry& SystemRegistry();

}  // namespace mirvalde
