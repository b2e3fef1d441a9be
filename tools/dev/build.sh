# shellcheck shell=sh
# Builds, and what is made of them.

# build PRESET [CMAKE OPTION...]
build() {
  preset=$1
  shift
  say "building: $preset"
  cmake --preset "$preset" "$@" --log-level=WARNING &&
    cmake --build --preset "$preset"
}

run_build() {
  need building windows
  build release -DKIV_TESTS=OFF
  build windows -DKIV_TESTS=OFF
  mkdir -p dist/linux dist/windows
  cp build/release/apps/kivsys/kivsys dist/linux/
  cp build/windows/apps/kivsys/kivsys.exe build/windows/apps/kivsystem/KivSystem.exe \
    build/windows/apps/companions/KIV*.EXE dist/windows/
  say "built"
  ls -l dist/linux dist/windows
}

run_package() {
  need building windows packaging
  build release -DKIV_TESTS=OFF
  build windows -DKIV_TESTS=OFF
  say "packages"
  packaging/package.sh build/release build/windows dist
  cat dist/SHA256SUMS
}

# The Debian package alone, where a new user installs it. As root, as only root can enter a bare system.
run_install_test() {
  need building packaging bare_system
  build release -DKIV_TESTS=OFF
  say "the Debian package"
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
  export SOURCE_DATE_EPOCH
  (umask 022 && cpack --config build/release/CPackConfig.cmake -B build/release/packages) >build/release/package.log || {
    cat build/release/package.log
    return 1
  }
  say "a bare Debian 12"
  as_root=
  [ "$(id -u)" -eq 0 ] || as_root=sudo
  $as_root tests/package/bare.sh build/release/packages/kivsys_*_amd64.deb "$PWD/build/bare"
}

run_demo() {
  need building
  build release -DKIV_TESTS=OFF
  say "the example, analyzed and converted"
  examples/demo.sh build/release/apps/kivsys/kivsys build/demo
}
