# shellcheck shell=sh
# Sourced by ./run and ./test: has a Debian machine install what they need and it lacks.

# What each needs, as PACKAGE=COMMAND or PACKAGE=HEADER. What is asked is whether the thing is
# there, not who brought it, so the package manager is left alone on any machine that has it all.
packages_to_build='
  g++=g++
  cmake=cmake
  ninja-build=ninja'
# shellcheck disable=SC2034  # read by ./test
packages_to_test="$packages_to_build
  clang-format-14=clang-format-14
  libboost-math-dev=boost/math/special_functions/gamma.hpp
  libgmock-dev=gmock/gmock.h
  libgtest-dev=gtest/gtest.h
  nlohmann-json3-dev=nlohmann/json.hpp
  pkg-config=pkg-config"
# Debian's `wine` brings the 64-bit half; for the other see cmake/wine.sh.
# shellcheck disable=SC2034  # read by ./test
packages_to_test_windows="$packages_to_test
  g++-mingw-w64-i686-posix=i686-w64-mingw32-g++-posix
  g++-mingw-w64-x86-64-posix=x86_64-w64-mingw32-g++-posix
  wine=wine
  zip=zip"

is_there() {
  case $1 in
    *.h | *.hpp)
      printf '#if !__has_include(<%s>)\n#error\n#endif\n' "$1" |
        g++ -x c++ -fsyntax-only - 2>/dev/null
      ;;
    *) command -v "$1" >/dev/null ;;
  esac
}

# missing_packages PACKAGE=THING...: those that this machine lacks, on one line.
missing_packages() {
  missing=
  for row in "$@"; do
    is_there "${row#*=}" || missing="$missing ${row%%=*}"
  done
  echo "${missing# }"
}

# Finds how to be root: `sudo` is the command to put in front, if any. May ask for a password.
can_be_root() {
  sudo=
  [ "$(id -u)" -ne 0 ] || return 0
  sudo=sudo
  command -v sudo >/dev/null && { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }; }
}

# install_packages PACKAGE...: quietly; what goes wrong is on standard error.
install_packages() {
  command -v apt-get >/dev/null && can_be_root || return 0
  echo "Installing $* (a minute or two) ..." >&2
  $sudo apt-get update -qq >/dev/null
  $sudo env DEBIAN_FRONTEND=noninteractive \
    apt-get install -qq -y --no-install-recommends "$@" >/dev/null
}

# ensure_packages PACKAGE=THING...: installs what is missing, or says which packages to install
# and ends the script.
ensure_packages() {
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  # Words, one a package.
  # shellcheck disable=SC2086
  install_packages $missing || true
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  echo "Please install these Debian packages and try again: $missing" >&2
  exit 1
}
