# Sourced by run, test and dev: has the packages that a group of packaging/packages names, and says what it does.
# On Debian and its relatives it installs what is missing, as root or by sudo; elsewhere it prints the names.

packages_of() {
    for group in "$@"; do
        awk -v group="[$group]" '/^\[/ { inside = ($0 == group); next } inside && !/^#/ && NF' packaging/packages
    done
}

missing_packages() {
    for package in $(packages_of "$@"); do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package"
    done
}

ensure_packages() {
    if [ -n "${MARROWFIN_PACKAGES_ARE_HERE:-}" ]; then
        return 0
    fi
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        echo "This isn't a Debian system. Install what these Debian 12 packages hold, then run again with" >&2
        echo "MARROWFIN_PACKAGES_ARE_HERE=1 in the environment:" >&2
        packages_of "$@" | fmt -w 100 >&2
        return 1
    fi
    local missing root
    missing=$(missing_packages "$@")
    if [ -z "$missing" ]; then
        return 0
    fi
    if [ "$(id -u)" = 0 ]; then
        root=
    elif command -v sudo >/dev/null; then
        root=sudo
    else
        echo "These packages are missing, and installing them takes root or sudo:" >&2
        echo "$missing" | fmt -w 100 >&2
        return 1
    fi
    echo "Installing by apt-get:"
    echo "$missing" | fmt -w 100
    export DEBIAN_FRONTEND=noninteractive
    # Only quiet where it goes well: what apt-get says against it is shown.
    $root env DEBIAN_FRONTEND=noninteractive apt-get -q update </dev/null >/dev/null &&
        # shellcheck disable=SC2086
        $root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 install \
            --no-install-recommends $missing </dev/null >/dev/null || {
        echo "apt-get could not install them." >&2
        return 1
    }
}

# Configures a preset and builds it: build_preset release [targets].
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build/$preset.configure.log" 2>&1 || {
        cat "build/$preset.configure.log" >&2
        return 1
    }
    if [ $# -gt 0 ]; then
        cmake --build "build/$preset" --target "$@"
    else
        cmake --build "build/$preset"
    fi
}
