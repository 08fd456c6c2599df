#!/usr/bin/env bash
# Builds the Debian package from the build tree and has lintian check it: no error allowed.
set -euo pipefail
build=${1:?usage: package_test.sh BUILD_DIR}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work" >/dev/null
package=$(ls "$work"/mirvalde_5.0.0_*.deb)
dpkg-deb --info "$package" | grep -E '^ (Depends|Recommends|Suggests|Section):'
fields=$(dpkg-deb --field "$package" Recommends Suggests)
grep -q '^Recommends:.*qt6-wayland' <<<"$fields" && grep -q '^Suggests:.*hardinfo' <<<"$fields" ||
    { echo "qt6-wayland not recommended or hardinfo not suggested"; exit 1; }
# "Infos système..." starts the system information tool that the installed registry file names.
dpkg-deb -x "$package" "$work/root"
registry=$work/root/etc/xdg/mirvalde/registry.reg
grep -qF '[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Shared Tools\MSINFO]' "$registry" &&
    grep -qF '"PATH"="/usr/bin/hardinfo"' "$registry" || { echo "no system information tool in $registry"; exit 1; }
# Root is warned against; the package itself is what is judged.
lintian --fail-on error --suppress-tags package-section-games-but-has-usr-bin "$package" 2>&1 |
    grep -v 'running with root privileges' || true
lintian --fail-on error "$package" >/dev/null 2>&1
echo "package checked: $(basename "$package")"
