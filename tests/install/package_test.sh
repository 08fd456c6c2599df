#!/usr/bin/env bash
# Builds the Debian package from the build tree and has lintian check it: no error allowed.
set -euo pipefail
build=${1:?usage: package_test.sh BUILD_DIR}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$work" >/dev/null
package=$(ls "$work"/mirvalde_5.0.0_*.deb)
dpkg-deb --info "$package" | grep -E '^ (Depends|Section):'
# Root is warned against; the package itself is what is judged.
lintian --fail-on error --suppress-tags package-section-games-but-has-usr-bin "$package" 2>&1 |
    grep -v 'running with root privileges' || true
lintian --fail-on error "$package" >/dev/null 2>&1
echo "package checked: $(basename "$package")"
