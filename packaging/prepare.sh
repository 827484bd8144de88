#!/bin/bash
# SPDX-License-Identifier: MIT
# Makes this checkout ready to use: installs the Debian packages that are missing, configures and builds (Release).
#
#   packaging/prepare.sh program    what ./tesselink needs
#   packaging/prepare.sh window     what ./tesselink-gui needs
#   packaging/prepare.sh tests      everything, with the tests and the benchmarks
#   packaging/prepare.sh checks     no build: only the packages of all that .ci/run does
#
# Says nothing when nothing is to do. All that it says goes to standard error.
set -eu

cd -- "$(dirname -- "$(readlink -f -- "$0")")/.."
what=${1:?usage: packaging/prepare.sh program|window|tests|checks}
build=build/release
if [ "$what" = window ]; then
  program=$build/tesselink-gui target=tesselink-gui stamp=$build/window.stamp
else
  program=$build/tesselink target=tesselink-cli stamp=$build/program.stamp
fi
# A stamp is as old as the sources that its program was last built from.

say() { printf '%s\n' "$*" >&2; }

# The packages of packaging/debian-packages.txt, of the groups that are needed.
packages() {
  local line group='' groups
  case $what in
    program | window) groups='program' ;;
    tests) groups='program tests' ;;
    checks) groups='program tests checks' ;;
  esac
  while read -r line; do
    case $line in
      '' | '#'*) ;;
      '['*) group=${line#[} group=${group%%]*} ;;
      *) if [[ " $groups " = *" $group "* ]]; then printf '%s\n' "$line"; fi ;;
    esac
  done < packaging/debian-packages.txt
}

missing_packages() {
  local wanted installed package
  wanted=$(packages)
  # shellcheck disable=SC2086  # one word for each package
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2> /dev/null || true)
  for package in $wanted; do
    case $'\n'$installed$'\n' in
      *$'\n'"installed $package"$'\n'*) ;;
      *) printf '%s ' "$package" ;;
    esac
  done
}

apt_get() {
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then as_root=(sudo); fi
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=300 "$@" >&2
}

install_missing_packages() {
  local missing lists
  # On another system CMake names what it lacks.
  if ! command -v dpkg-query > /dev/null; then return; fi
  missing=$(missing_packages)
  missing=${missing% }
  if [ -z "$missing" ]; then return; fi
  if [ "$(id -u)" -eq 0 ] || command -v sudo > /dev/null; then
    say "Installing Debian packages: $missing"
    lists=$(find /var/lib/apt/lists -name '*_Packages*' -print -quit 2> /dev/null || true)
    if [ -z "$lists" ]; then apt_get update || true; fi
    # shellcheck disable=SC2086  # one word for each package
    if apt_get install --no-install-recommends $missing; then return; fi
    say "Trying again with fresh package lists"
    # shellcheck disable=SC2086
    if apt_get update && apt_get install --no-install-recommends $missing; then return; fi
  fi
  say "Some Debian packages are missing. Install them and run this again:"
  say "  sudo apt-get update && sudo apt-get install --no-install-recommends $missing"
  exit 1
}

cached() { grep -qxF "$1" $build/CMakeCache.txt 2> /dev/null; }

configure() {
  local fresh=()
  # A checkout that was moved or copied brings a build folder along that belongs to the old place.
  if ! cached "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD"; then fresh=(--fresh); fi
  cmake --preset release "${fresh[@]}" "$@" > $build.log 2>&1 || { cat $build.log >&2; exit 1; }
}

build() {
  if [ ! -e $stamp ]; then say "Building Tesselink$1 (only the first time takes minutes)"; fi
  touch $build/started.stamp
  shift
  cmake --build $build "$@" > $build.log 2>&1 || { cat $build.log >&2; exit 1; }
  mv $build/started.stamp $stamp
}

program_is_current() {
  [ -x $program ] && [ -e $stamp ] &&
    [ -z "$(find CMakeLists.txt CMakePresets.json cmake data packaging src -newer $stamp -print -quit 2> /dev/null)" ] &&
    $program --version > /dev/null 2>&1
}

prepare_program() {
  if program_is_current; then return; fi
  install_missing_packages
  if [ ! -e $build/build.ninja ] || ! cached "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD"; then
    configure -DTESSELINK_TESTS=OFF -DTESSELINK_BENCH=OFF
  fi
  build '' --target $target
}

prepare_window() { prepare_program; }

prepare_checks() { install_missing_packages; }

prepare_tests() {
  install_missing_packages
  configure -DTESSELINK_TESTS=ON -DTESSELINK_BENCH=ON
  build ', its tests and benchmarks'
  cp -p $stamp $build/window.stamp
}

case $what in
  program | window) if program_is_current; then exit 0; fi ;;
  tests | checks) ;;
  *) say "usage: packaging/prepare.sh program|window|tests|checks"; exit 2 ;;
esac
# Of two started at once the second waits, and then finds the work done.
mkdir -p build
exec 9> build/prepare.lock
flock --nonblock 9 || { say "Waiting for another one that prepares this checkout"; flock 9; }
"prepare_$what" < /dev/null 9>&-
