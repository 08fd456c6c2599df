// The machine's own registry, on Windows only. Our header comes first: <windows.h> makes
// macros of the names that it shares with it.
#include "MachineRegistry.h"

#include <windows.h>

#include <cstdint>

// The methods bear the names of the calls, which <windows.h> makes macros of (the A or W one).
#undef RegOpenKeyEx
#undef RegQueryValueEx

namespace mirvalde {
namespace {

// The predefined roots are 32-bit handle values that Windows sign-extends on 64 bits:
// HKEY_LOCAL_MACHINE is 0x80000002 to the game, 0xFFFFFFFF80000002 to a 64-bit Windows.
HKEY Handle(MachineRegistry::Key key) {
    if (key >= 0x80000000u && key <= 0x800000FFu) {
        return reinterpret_cast<HKEY>(
            static_cast<std::intptr_t>(static_cast<std::int32_t>(static_cast<std::uint32_t>(key))));
    }
    return reinterpret_cast<HKEY>(key);
}

class WindowsRegistry final : public MachineRegistry {
  public:
    long RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t options,
                      std::uint32_t access, Key& opened) override {
        HKEY key = nullptr;
        const LONG result = ::RegOpenKeyExA(Handle(root), subKey.c_str(), options, access, &key);
        opened = reinterpret_cast<Key>(key);
        return result;
    }
    long RegQueryValueEx(Key key, const std::string& valueName, std::uint32_t& type, char* data,
                         std::uint32_t& size) override {
        DWORD kind = 0;
        DWORD length = size;
        const LONG result = ::RegQueryValueExA(Handle(key), valueName.c_str(), nullptr, &kind,
                                               reinterpret_cast<BYTE*>(data), &length);
        type = kind;
        size = length;
        return result;
    }
    long RegCloseKey(Key key) override { return ::RegCloseKey(Handle(key)); }
};

}  // namespace

MachineRegistry& SystemRegistry() {
    static WindowsRegistry registry;
    return registry;
}

}  // namespace mirvalde
