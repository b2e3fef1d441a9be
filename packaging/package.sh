#!/bin/sh
# Packs what was built. Needs nsis, zip, cmake and dpkg-dev.
# Usage: package.sh LINUX_BUILD WINDOWS_BUILD FOLDER
# Leaves the Debian package, the installer, the portable zip and their checksums in FOLDER, instead of older ones.
set -eu
sources=$(cd "$(dirname "$0")/.." && pwd)
linux=$(cd "$1" && pwd)
windows=$(cd "$2" && pwd)
mkdir -p "$3"
folder=$(cd "$3" && pwd)

# The files have the time of the last commit, so that the packages are reproducible. Sources without a history have a
# fixed time.
time_of_sources() {
  git -c safe.directory="$sources" -C "$sources" log -1 --format=%ct 2>/dev/null || stat -c %Y "$sources/CMakeLists.txt"
}
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(time_of_sources)}
export SOURCE_DATE_EPOCH
export TZ=UTC LC_ALL=C.UTF-8
umask 022

log=$windows/package.log
quietly() {
  "$@" >"$log" 2>&1 || {
    cat "$log" >&2
    exit 1
  }
}

make_pages() {
  rm -rf "$windows/pages"
  for text in "$sources"/examples/beethoven-9/SYMPH*.txt "$sources"/examples/broken-minuet/*.txt \
    "$sources"/examples/silent-march/*.txt; do
    folder_of_piece=$windows/pages/$(basename "$(dirname "$text")")
    mkdir -p "$folder_of_piece"
    "$linux/apps/kivsys/kivsys" build --force "$text" "$folder_of_piece/$(basename "$text" .txt).MUS"
  done
}

make_completions() {
  rm -rf "$windows/completions"
  mkdir -p "$windows/completions"
  "$linux/apps/kivsys/kivsys" completions powershell >"$windows/completions/lines"
  sed "s/\$/$(printf '\r')/" "$windows/completions/lines" >"$windows/completions/kivsys.ps1"
  rm "$windows/completions/lines"
}

make_zip() {
  name=KivSystem-$version-windows
  stage=$windows/portable
  rm -rf "$stage"
  quietly cmake --install "$windows" --prefix "$stage/$name" --strip
  find "$stage" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
  (cd "$stage" && find "$name" | sort | zip -q -X -9 "$folder/$name.zip" -@)
}

version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")/\1/p' "$windows/CPackConfig.cmake")
rm -f "$folder"/*.zip "$folder"/*-setup.exe "$folder"/*.deb "$folder/SHA256SUMS"
make_pages
make_completions
make_zip
quietly cpack --config "$windows/CPackConfig.cmake" -B "$windows/packages"
quietly cpack --config "$linux/CPackConfig.cmake" -B "$linux/packages"
cp "$windows/packages/KivSystem-$version-setup.exe" "$linux/packages/kivsys_${version}_amd64.deb" "$folder"
cd "$folder"
sha256sum "KivSystem-$version-setup.exe" "KivSystem-$version-windows.zip" "kivsys_${version}_amd64.deb" >SHA256SUMS
