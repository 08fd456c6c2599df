// The machine's own registry, on Windows only.
#include <windows.h>

#include "MachineRegistry.h"

namespace mirvalde {
namespace {

class WindowsRegistry final : public MachineRegistry {
  public:
    long RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t options,
                      std::uint32_t access, Key& opened) override {
        HKEY key = nullptr;
        const LONG result =
            ::RegOpenKeyExA(reinterpret_cast<HKEY>(root), subKey.c_str(), options, access, &key);
        opened = reinterpret_cast<Key>(key);
        return result;
    }
    long RegQueryValueEx(Key key, const std::string& valueName, std::uint32_t& type, char* data,
                         std::uint32_t& size) override {
        DWORD kind = 0;
        DWORD length = size;
        const LONG result =
            ::RegQueryValueExA(reinterpret_cast<HKEY>(key), valueName.c_str(), nullptr, &kind,
                               reinterpret_cast<BYTE*>(data), &length);
        type = kind;
        size = length;
        return result;
    }
    long RegCloseKey(Key key) override { return ::RegCloseKey(reinterpret_cast<HKEY>(key)); }
};

}  // namespace

MachineRegistry& SystemRegistry() {
    static WindowsRegistry registry;
    return registry;
}

}  // namespace mirvalde
