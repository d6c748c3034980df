# Sourced by the other scripts: installs the Debian packages that a job needs, and builds.

# pelmora_packages PACKAGE...: installs what is missing, with sudo when not root. On a system
# without apt it lists the packages and continues, since the programs may be installed under other
# names.
pelmora_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This is no Debian or Ubuntu; make sure that you have the equivalents of: $*" >&2
        return 0
    fi
    local missing=() package
    for package in "$@"; do
        # A package may be installed for several architectures, with a line for each; grep reads them
        # all, as a writer that nobody reads would fail.
        if ! dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null |
            grep -x installed >/dev/null; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please install, as root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    # An automatic update may hold the lock for a while.
    local apt_get=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get -q -o DPkg::Lock::Timeout=300)
    "${apt_get[@]}" update
    "${apt_get[@]}" install -y --no-install-recommends "${missing[@]}"
}

# Needed to build and start the program.
pelmora_build_packages=(g++ gcc cmake ninja-build qt6-base-dev libgl-dev binutils-mingw-w64-x86-64
    fonts-dejavu-core x11-utils)

# Needed in addition for the tests and the guided tour.
pelmora_test_packages=(libgtest-dev xvfb openbox weston qt6-wayland
    # For check_includes.
    python3
    # The sources of the locale of the second run of the tour.
    locales
    # What a screen reader would use, and keys for it.
    at-spi2-core dbus-daemon gir1.2-atspi-2.0 python3-gi xdotool
    # Programs that read the files that Pelmora writes, and write what it reads.
    ghostscript emf2svg librsvg2-bin poppler-utils xclip wl-clipboard)

# Needed in addition to build for Windows and run that.
pelmora_windows_packages=(g++-mingw-w64-x86-64-posix googletest wine wine64 xvfb zip nsis
    python3-markdown
    # Optional for Wine: X extensions, printers and fonts.
    libxcomposite1 libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 libcups2
    fonts-wine fonts-liberation)

# Needed in addition to make the Debian package, to check it, and to try it in new systems.
pelmora_package_packages=(dpkg-dev fakeroot file libpng-dev python3-markdown
    appstream desktop-file-utils groff libxml2-utils lintian man-db
    debian-archive-keyring gpg mmdebstrap uidmap)

# Needed in addition for the fuzzers.
pelmora_fuzz_packages=(clang libclang-rt-dev)

# pelmora_build ROOT PRESET [TARGET...]: configures and builds. Where pelmora_strict is set, warnings
# are errors in every preset.
pelmora_build() {
    local root=$1 preset=$2
    shift 2
    (
        cd "$root"
        cmake --preset "$preset" ${pelmora_strict:+-DCMAKE_COMPILE_WARNING_AS_ERROR=ON} >/dev/null
        if [ $# -gt 0 ]; then cmake --build "build/$preset" --target "$@"; else cmake --build "build/$preset"; fi
    )
}

# pelmora_display: prints the toolkit's platform for the user's display; fails without one. A Wayland
# session has an X server, too, but its programs are blurred where the screen is dense.
pelmora_display() {
    if [ -n "${QT_QPA_PLATFORM:-}" ]; then
        echo "$QT_QPA_PLATFORM"
    elif [ -S "${XDG_RUNTIME_DIR:-}/${WAYLAND_DISPLAY:-none}" ]; then
        echo wayland
    elif [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then
        echo xcb
    else
        return 1
    fi
}
