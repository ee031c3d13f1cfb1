# Sourced by ./run, ./test and .ci/run: installs what is missing of packages.txt and builds a preset.
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# install_packages [list]
install_packages() {
    local wanted missing sudo=
    wanted=$(grep -v '^#' "${1:-packages.txt}")
    missing=$(for p in $wanted; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null)" = installed ] || echo "$p"
    done)
    [ -z "$missing" ] && return
    [ "$(id -u)" = 0 ] || sudo=sudo
    echo "Installing packages (once, some minutes):" $missing
    $sudo apt-get -o DPkg::Lock::Timeout=300 update -qq
    # shellcheck disable=SC2086
    LC_ALL=C DEBIAN_FRONTEND=noninteractive $sudo apt-get -o DPkg::Lock::Timeout=300 install -y -q \
        --no-install-recommends $missing | tell_installing
}

# Both read line by line: awk would keep the lines back until it has many.
tell_installing() {
    local n=0 line
    while read -r line; do
        case $line in
            *"newly installed"* | "Need to get"*) echo "  $line" ;;
            "Setting up"*) n=$((n + 1)); if [ $((n % 50)) = 0 ]; then echo "  $n packages are set up"; fi ;;
        esac
    done
}

# Tells of a long build at every tenth of it.
tell_progress() {
    local told=0 line
    while read -r line; do
        [[ $line =~ ^\[([0-9]+)/([0-9]+)\] ]] || continue
        if [ "${BASH_REMATCH[2]}" -gt 20 ] && [ $((10 * BASH_REMATCH[1] / BASH_REMATCH[2])) -gt $told ]; then
            told=$((10 * BASH_REMATCH[1] / BASH_REMATCH[2]))
            echo "  ${told}0 % (${BASH_REMATCH[1]} of ${BASH_REMATCH[2]})"
        fi
    done
}

# build PRESET: configures once, then lets ninja see what changed.
build() {
    [ -f "build-$1/build.ninja" ] || echo "Building $1 for the first time"
    [ -f "build-$1/build.ninja" ] || cmake --preset "$1" > "/tmp/quorvel-configure.$$" ||
        { cat "/tmp/quorvel-configure.$$"; return 1; }
    ninja -C "build-$1" ${2:-} | tee "/tmp/quorvel-build.$$" | tell_progress || { tail -n 60 "/tmp/quorvel-build.$$"; return 1; }
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

# run_fuzzers SECONDS: each starts from its corpus and the program's own files; an input that breaks a promise
# is kept in build-fuzz/found. Whole paths: a target may go to a folder of its own.
run_fuzzers() {
    local fuzzer target log work seeds failed=0
    work=$(mktemp -d)
    mkdir -p build-fuzz/found
    for fuzzer in build-fuzz/bin/fuzz_*; do
        target=${fuzzer##*/fuzz_}
        log=$work/$target.log
        mkdir "$work/$target"
        case $target in
            informe) seeds=$PWD/data/reports ;;
            sql) seeds=$PWD/data/schema ;;
            *) seeds= ;;
        esac
        # shellcheck disable=SC2086
        if "$fuzzer" -max_total_time="$1" -max_len=6000 -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 \
            -artifact_prefix="$PWD/build-fuzz/found/$target-" "$work/$target" "$PWD/tests/fuzz/corpus/$target" $seeds \
            > "$log" 2>&1; then
            echo "$target: $(sed -n 's/^stat::number_of_executed_units: *//p' "$log") executions," \
                "$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -n 1) branches reached, nothing found"
        else
            failed=1
            echo "$target: FOUND"
            grep -aE -A1 'broken:|ERROR:|runtime error|terminate|Test unit' "$log" | head -n 12
        fi
    done
    rm -rf "$work"
    return $failed
}
