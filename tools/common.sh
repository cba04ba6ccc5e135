# What run, test and .ci/run share: the packages that each needs, their installation, and quiet steps.
# To be sourced, with the repository's root as the working directory.
# shellcheck shell=bash

# Debian packages, by what they are for. The arrays are for the scripts that source this file.
# shellcheck disable=SC2034
{
    kBuildPackages=(
        cmake g++ ninja-build qt6-base-dev librsvg2-bin fonts-dejavu-core
        qt6-image-formats-plugins # previews of TIFF and WebP pictures
        fp-utils-3.2.2            # the compiler of the manual's help file
    )
    # A virtual screen to show the window on, a window manager to close it, and the camera.
    kVirtualDisplayPackages=(blackbox imagemagick wmctrl xauth xvfb)
    kTestPackages=(
        clang clang-format libclang-rt-14-dev llvm # sanitizers, fuzzing, style
        libbenchmark-dev libgtest-dev
        chromium # to read the reports
        libchm-bin libhivex-bin liblnk-utils libmsiecf-utils libregf-utils reglookup # independent readers to compare with
    )
    # The Windows edition: compilers, the makers of its icon and its zip, and what runs its tests.
    kWindowsPackages=(
        g++-mingw-w64-i686-win32 g++-mingw-w64-x86-64-win32 icoutils imagemagick unzip zip
        googletest # the sources, for a compiler that Debian has no library for
        wine wine64
        xdotool # drags in the window test
    )
    kLintPackages=(clang-tidy shellcheck)
}

Say() { printf '%s\n' "$*"; }

# Fail MESSAGE...: one line on standard error, and the end.
Fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# Sources FOLDER...: the C++ files below the folders, one a line.
Sources() { find "$@" -name '*.cpp' -o -name '*.h' | sort; }

CheckFormat() {
    Say "Checking the format of the sources"
    Sources bench fuzz src tests tools | xargs clang-format --dry-run --Werror || Fail "clang-format -i on the files above puts this right"
}

# Quietly LOG COMMAND...: runs the command with its output in the file LOG, and shows that file if it fails.
Quietly() {
    local log=$1
    shift
    mkdir -p "${log%/*}"
    "$@" </dev/null >"$log" 2>&1 || {
        cat "$log" >&2
        Fail "this failed: $* (its output is above, and in $log)"
    }
}

# MissingPackages PACKAGE...: prints those that are not installed, one a line.
MissingPackages() {
    local known
    known=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null) || true
    printf '%s\n' "$@" | grep -v -x -F -f <(sed -n 's/^installed //p' <<<"$known") || true
}

# Install PACKAGE...: by way of the command in the array asRoot, if there is one.
Install() {
    # A source of packages that does not answer need not be the one that matters: the installation tells.
    "${asRoot[@]}" apt-get update -qq || true
    "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@"
}

# InstallMissing PACKAGE...: installs those that are not there. Needs neither rights nor network if all are.
InstallMissing() {
    command -v dpkg-query >/dev/null || Fail "this needs Debian 12 with these packages: $*"
    local missing
    mapfile -t missing < <(MissingPackages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0

    local asRoot=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            Fail "these packages are missing, and installing them takes root or sudo: ${missing[*]}"
        asRoot=(sudo)
    fi
    Say "Installing ${missing[*]}"
    # The password is asked for before the output goes to the log.
    "${asRoot[@]}" true || Fail "these packages are missing, and sudo refused: ${missing[*]}"
    Quietly build/install.log Install "${missing[@]}"
}
