# Sourced by every script here: where the project lies, how a script speaks, how it installs.

set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$top"

# Without these the cache leaves alone what uses a precompiled header, which is everything here, and takes the
# same file in another build tree for another file (ccache's manual, "Precompiled headers").
export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=$top

say() { printf '%s: %s\n' "$(basename "$0")" "$*"; }

# Ends the script with one clear sentence.
die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Runs a command as root: as it is for root, through sudo for everybody else.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "this step needs root: run it as root, or install sudo ($*)"
  fi
}

# Prints those of the given Debian packages that aren't installed.
missing_packages() {
  local name
  for name in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || printf '%s\n' "$name"
  done
}

# Installs those of the given Debian packages that are missing; says nothing when there are none.
install_packages() {
  local missing
  mapfile -t missing < <(missing_packages "$@")
  [ "${#missing[@]}" -eq 0 ] && return 0
  command -v apt-get >/dev/null || die "these packages are missing, and this system has no apt-get: ${missing[*]}"
  say "installing ${missing[*]}"
  as_root apt-get update -qq || die "the package lists could not be updated; is there a network?"
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    die "these packages could not be installed: ${missing[*]}"
}

# What the program writes with.
font_packages=(fonts-inter fonts-noto-core fonts-jetbrains-mono)

# Debian packages, each for the reason that docs/architecture.md gives.
build_packages=(g++ cmake ninja-build ccache mold git
  qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev qcoro-qt6-dev libmd4c-dev libcurl4-openssl-dev libssl-dev zlib1g-dev
  libgtest-dev libgmock-dev libbenchmark-dev)
package_packages=(dpkg-dev file patchelf)
test_packages=(xvfb xauth dbus dbus-daemon at-spi2-core procps tzdata systemd python3
  lintian desktop-file-utils appstream mandoc ca-certificates "${package_packages[@]}"
  poppler-utils "${font_packages[@]}" fonts-droid-fallback fonts-noto-color-emoji)
compare_packages=(chromium xvfb xauth dbus-daemon "${font_packages[@]}")

# The build tree of a preset.
tree_of() {
  case $1 in
    release) printf 'build\n' ;;
    debug | asan | tsan | fuzz) printf 'build-%s\n' "$1" ;;
    *) die "there is no preset called $1" ;;
  esac
}
