# shellcheck shell=bash disable=SC2034
# What ./run, ./test, ./bench and the checks share: which packages are needed, how they are installed, and how a preset
# is built. Sourced; top is the project's folder. A Mac has the bash of 2007, so what runs there takes no array that may
# be empty as it is, and no mapfile.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-declarative-dev
    qt6-declarative-dev-tools libgl-dev libplist-dev libsystemd-dev libmnl-dev libxcb1-dev libxcb-res0-dev
    qcoro-qt6-dev libsecret-1-dev libgcrypt20-dev librsvg2-dev librsvg2-bin libseccomp-dev)
run_packages=(qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript qml6-module-qtquick
    qml6-module-qtquick-window fonts-inter)
test_packages=(qml6-module-qttest dbus-daemon trash-cli gvfs libglib2.0-bin gnome-keyring libsecret-tools
    openssl)
package_packages=(dpkg-dev file gzip)
# What tries the packages, and what reads them.
trial_packages=(debootstrap xvfb xdotool imagemagick)
package_lint_packages=(lintian desktop-file-utils appstream)
# What only some tests need is said by their label, needs-PACKAGE.
lint_packages=(git clang-format clang-tidy shellcheck imagemagick)
# What fuzzes the readers.
fuzz_packages=(clang libclang-rt-14-dev)
# What compiles for a Mac.
mac_packages=(clang-16 llvm-16 libc++-16-dev musl-dev)
# What reads the windows as a screen reader does.
reader_packages=(xvfb xdotool weston qt6-wayland dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3 python3-gi)
bench_packages=(libbenchmark-dev)
# What does the same as Swabby or a part of it, and what that is measured on.
peer_packages=(jdupes rmlint rdfind fdupes gdu btop gnome-system-monitor stacer xvfb openbox dbus-daemon)
# What Homebrew calls what building on a Mac needs.
brew_packages=(cmake ninja pkgconf qtbase qtdeclarative libplist libgcrypt)

say() {
    printf '%s\n' "$*"
}

complain() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
}

is_mac() {
    [[ $OSTYPE == darwin* ]]
}

# need_brew_packages PURPOSE: what need_packages does, on a Mac.
need_brew_packages() {
    local missing=()
    if ! command -v brew >/dev/null; then
        complain "$1 needs Homebrew (https://brew.sh), and of it: ${brew_packages[*]}"
        exit 1
    fi
    IFS=$'\n' read -r -d '' -a missing < <(printf '%s\n' "${brew_packages[@]}" |
        grep -vxF -e "$(brew list --formula -1)") || true
    if ((${#missing[@]} > 0)); then
        say "Installing what $1 needs: ${missing[*]}"
        brew install --quiet "${missing[@]}" </dev/null
    fi
    CMAKE_PREFIX_PATH=$(brew --prefix)${CMAKE_PREFIX_PATH:+:$CMAKE_PREFIX_PATH}
    export CMAKE_PREFIX_PATH
}

# missing_packages NAME…: those of the packages that are not installed, one a line.
missing_packages() {
    local installed
    # The query fails as soon as one of them is unknown to it, and still tells of the others.
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p') || true
    printf '%s\n' "$@" | grep -vxF -e "$installed" || true
}

# need_packages PURPOSE NAME…: installs what is missing, or says what to install and ends.
need_packages() {
    local purpose=$1 missing=() as_root=(env)
    shift
    if is_mac; then
        need_brew_packages "$purpose"
        return
    fi
    (($# > 0)) || return 0
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "Not a Debian system, so nothing is installed here; $purpose needs what Debian calls: $*"
        return 0
    fi
    IFS=$'\n' read -r -d '' -a missing < <(missing_packages "$@") || true
    ((${#missing[@]} > 0)) || return 0
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            complain "$purpose needs packages that only root can install: apt-get install ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "Installing what $purpose needs (a minute or two, depending on the network): ${missing[*]}"
    if ! "${as_root[@]}" apt-get -qq -o Dpkg::Use-Pty=0 update </dev/null ||
        ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -y -o Dpkg::Use-Pty=0 --no-install-recommends install "${missing[@]}" </dev/null; then
        complain "could not install them; as root: apt-get install ${missing[*]}"
        exit 1
    fi
}

processors() {
    getconf _NPROCESSORS_ONLN 2>/dev/null || echo 2
}

# What build_preset configures with beside the preset.
cmake_options=()

# build_preset PRESET MINUTES [TARGET…]: configures when that is due and builds everything, or the targets. MINUTES is
# what a first build takes on two processors.
build_preset() {
    local preset=$1 minutes=$2
    local folder=$top/build/$preset
    shift 2
    # A folder that was moved or copied carries a configuration of its old place, which CMake refuses.
    if [[ -f $folder/CMakeCache.txt ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$top" "$folder/CMakeCache.txt"; then
        rm -rf -- "$folder"
    fi
    if [[ ! -f $folder/build.ninja ]]; then
        say "Building for the first time: about $(((minutes * 2 + $(processors) - 1) / $(processors))) minutes on this machine."
    fi
    if [[ ! -f $folder/build.ninja || $top/CMakePresets.json -nt $folder/build.ninja ]] ||
        ((${#cmake_options[@]} > 0)); then
        (cd "$top" && cmake --preset "$preset" --log-level=WARNING ${cmake_options[@]+"${cmake_options[@]}"})
    fi
    NINJA_STATUS='[%f of %t, %e s] ' cmake --build "$folder" --parallel "$(processors)" ${1:+--target "$@"}
}
