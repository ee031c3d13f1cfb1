# Sourced by ./run, ./test and .ci/run: installs what is missing of packages.txt and builds a preset.
cd "$(dirname "${BASH_SOURCE[0]}")/.."

install_packages() {
    local wanted missing sudo=
    wanted=$(grep -v '^#' packages.txt)
    missing=$(for p in $wanted; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null)" = installed ] || echo "$p"
    done)
    [ -z "$missing" ] && return
    [ "$(id -u)" = 0 ] || sudo=sudo
    echo "Installing:" $missing
    $sudo apt-get -o DPkg::Lock::Timeout=300 update -qq
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $sudo apt-get -o DPkg::Lock::Timeout=300 install -y -qq \
        --no-install-recommends $missing > /dev/null
}

# build PRESET: configures once, then lets ninja see what changed.
build() {
    [ -f "build-$1/build.ninja" ] || cmake --preset "$1" > "/tmp/quorvel-configure.$$" ||
        { cat "/tmp/quorvel-configure.$$"; return 1; }
    ninja -C "build-$1" ${2:-} > "/tmp/quorvel-build.$$" || { tail -n 60 "/tmp/quorvel-build.$$"; return 1; }
    rm -f "/tmp/quorvel-configure.$$" "/tmp/quorvel-build.$$"
}

# run_tests PRESET [ctest arguments]
run_tests() {
    local preset=$1 runtime
    shift
    runtime=$(mktemp -d)
    chmod 700 "$runtime"
    XDG_RUNTIME_DIR=$runtime QT_QPA_PLATFORM=offscreen \
        ctest --test-dir "build-$preset" -j2 --output-on-failure "$@"
}
