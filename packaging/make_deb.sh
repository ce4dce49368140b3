#!/usr/bin/env bash
# Makes the Debian package of the game from this source tree:
#   packaging/make_deb.sh   ->   build/deb/zifferndach_VERSION_ARCH.deb
# Built as Debian builds its packages, with dpkg-buildflags' hardening, and
# with every time stamp set to the changelog's date, so that the same
# source gives the same package.
set -euo pipefail
cd "$(dirname "$0")/.."

export DEB_BUILD_MAINT_OPTIONS=hardening=+all
eval "$(dpkg-buildflags --export=sh)"
SOURCE_DATE_EPOCH="$(dpkg-parsechangelog -l packaging/changelog -STimestamp)"
export SOURCE_DATE_EPOCH

cmake -S . -B build/deb -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_INSTALL_PREFIX=/usr \
      -DZD_BUILD_TESTS=OFF -DCMAKE_CXX_FLAGS="$CPPFLAGS $CXXFLAGS" \
      -DCMAKE_EXE_LINKER_FLAGS="$LDFLAGS"
cmake --build build/deb -j2
(cd build/deb && cpack -G DEB)
ls build/deb/zifferndach_*.deb
