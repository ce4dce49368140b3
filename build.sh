#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks, builds, and then
#   ./build.sh play   starts the game
#   ./build.sh test   runs every test, also under the sanitizers
set -euo pipefail
cd "$(dirname "$0")"

packages=(cmake g++ make qt6-base-dev qt6-svg-dev qt6-multimedia-dev libgtest-dev
          fonts-liberation qt6-translations-l10n libgl-dev clang libclang-rt-14-dev
          appstream desktop-file-utils clang-format clang-tidy)
# The Windows build of everything but Qt, and wine to test it; its
# installer and zip, made with msitools' wixl (faketime and python3 make
# them the same bytes on every build); an X server, a D-Bus session and the
# AT-SPI bus to play the game as a screen reader and to show the Windows
# program's windows.
if [ "${1:-}" = test ]; then
  packages+=(g++-mingw-w64-x86-64-posix googletest wine64 wixl msitools faketime python3
             xvfb dbus-daemon at-spi2-core python3-pyatspi)
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y "${missing[@]}"
fi

case "${1:-}" in
  play)
    cmake --preset release
    cmake --build --preset release
    exec ./build/release/bin/zifferndach
    ;;
  test)
    # Once as shipped, once more under AddressSanitizer and
    # UndefinedBehaviorSanitizer, the best list's fuzz target, and
    # everything but Qt built for Windows and run under wine.
    for preset in test asan fuzz mingw; do
      cmake --preset "$preset"
      cmake --build --preset "$preset"
      ctest --preset "$preset"
    done
    ;;
  *)
    echo "usage: ./build.sh play | test" >&2
    exit 2
    ;;
esac
