# shellcheck shell=sh
# Sourced by ./test, behind cmake/packages.sh: runs programs for Windows, of 64 and of 32 bit, on a
# Debian machine that need not have a display.

# Asked for by itself, Debian's 32-bit half comes with a whole second architecture, which changes a
# machine for good. Wine needs but its libraries, which are programs for Windows themselves.
has_wine32() {
  [ -d /usr/lib/i386-linux-gnu/wine/i386-windows ] || [ -d "$1/i386-windows" ]
}

debian_mirror() {
  cat /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list 2>/dev/null |
    sed -n -e 's/^URIs: *\([^ ]*\).*/\1/p' -e 's/^deb \(\[[^]]*\] *\)\{0,1\}\([^ ]*\) .*/\2/p' |
    grep -v security | head -n 1
}

# download_wine32 FOLDER: the package of the other architecture, by lists of its own, so that the
# machine's know nothing of it. No need to be root.
download_wine32() {
  mkdir -p "$1/lists/partial" "$1/cache/archives/partial"
  # shellcheck source=/dev/null
  suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
  key=/usr/share/keyrings/debian-archive-keyring.gpg
  echo "deb [arch=i386 signed-by=$key] $(debian_mirror) $suite main" >"$1/main.list"
  set -- "$1" -qq -o APT::Architectures=i386 -o APT::Sandbox::User="$(id -un)" \
    -o Dir::Etc::sourcelist="$1/main.list" -o Dir::Etc::sourceparts=- \
    -o Dir::State::lists="$1/lists" -o Dir::Cache="$1/cache"
  (
    cd "$1" && shift
    apt-get "$@" update && apt-get "$@" download libwine:i386
  ) >/dev/null
}

# ensure_wine32 FOLDER: unpacks the 32-bit half there, if the system has none.
ensure_wine32() {
  has_wine32 "$1" && return
  echo "Fetching the 32-bit half of Wine (a minute) ..." >&2
  new=$1.new
  rm -rf "$new"
  mkdir -p "$new"
  if download_wine32 "$new"; then
    dpkg --fsys-tarfile "$new"/libwine_*_i386.deb |
      tar -x -C "$new" --strip-components=5 ./usr/lib/i386-linux-gnu/wine/i386-windows
    mkdir -p "$1"
    mv "$new/i386-windows" "$1"
  fi
  rm -rf "$new"
  has_wine32 "$1" && return
  echo "The 32-bit half of Wine can't be had. Unpack i386-windows of libwine:i386 into $1" >&2
  exit 1
}

# make_prefix: Wine's own Windows, in $WINEPREFIX. No display: windows are there, but not drawn.
make_prefix() {
  [ ! -e "$WINEPREFIX/is_made" ] || return 0
  echo "Making a Windows of Wine's in $WINEPREFIX ..." >&2
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  # Without asking for the parts that it would have a user download.
  WINEARCH=win64 WINEDLLOVERRIDES='mscoree,mshtml=' wineboot -i >/dev/null 2>&1 </dev/null
  wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 </dev/null
  wineserver -k || true
  wineserver -w
  touch "$WINEPREFIX/is_made"
}

# start_wine PREFIX: from then on `wine` runs programs, fast, as its server stays until the script
# ends.
start_wine() {
  WINEPREFIX=$1
  # Also keeps Debian's `wine` from advising to install the other half.
  WINEDEBUG=-all
  # The language of its users, English, and UTF-8.
  LC_ALL=C.UTF-8
  export WINEPREFIX WINEDEBUG LC_ALL
  unset DISPLAY WAYLAND_DISPLAY
  cache=${XDG_CACHE_HOME:-${HOME:-$(pwd)/build}/.cache}
  WINEDLLPATH=$cache/quantiverse/$(wine --version | tr -cs 'A-Za-z0-9.\n' -)
  export WINEDLLPATH
  ensure_wine32 "$WINEDLLPATH"
  trap 'wineserver -k || true' EXIT
  trap 'exit 130' INT TERM HUP
  make_prefix
  wineserver -p >/dev/null 2>&1 </dev/null
  # The first program leaves services behind, and the first with a window a desktop, which would
  # keep a pipe of their caller's open. A window that stays keeps the desktop.
  wine wineboot >/dev/null 2>&1 </dev/null
  wine explorer >/dev/null 2>&1 </dev/null &
}
