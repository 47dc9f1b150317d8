# shellcheck shell=bash
# Shared by the scripts: sourced, not run. Moves to the root of the project.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# How many things at once; JOBS in the environment overrides it.
JOBS="${JOBS:-$(nproc)}"

PACKAGES_PROGRAM=(g++ cmake ninja-build pkg-config libsqlite3-dev libpq-dev libcli11-dev libfmt-dev nlohmann-json3-dev
    libssl-dev libjs-chart.js ccache)
# shellcheck disable=SC2034 # used by who sources this
PACKAGES_TEST=("${PACKAGES_PROGRAM[@]}" libgtest-dev libbenchmark-dev postgresql clang libclang-rt-dev clang-format
    python3)

headline() { printf '\n== %s\n' "$*"; }

# need_packages NAME...: installs the Debian packages that are missing, and touches nothing if none is.
need_packages() {
    command -v dpkg-query >/dev/null || return 0 # not a Debian: whatever is there must do
    local missing=() name as_root=()
    for name in "$@"; do
        [[ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" == installed ]] || missing+=("$name")
    done
    ((${#missing[@]})) || return 0
    headline "Installing ${missing[*]}"
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            echo "these packages are missing, and there is no sudo; as root:" >&2
            echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# configure_and_build PRESET [ARGUMENT OF CMAKE...]
configure_and_build() {
    local preset="$1"
    shift
    cmake --preset "$preset" --log-level=WARNING "$@" >/dev/null
    cmake --build --preset "$preset" -j"$JOBS"
}

# source_files: the project's C++ files, new ones included.
source_files() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp' | sort -u |
            while read -r file; do [[ -f "$file" ]] && echo "$file"; done
    else
        find . -path ./build -prune -o \( -name '*.h' -o -name '*.cpp' \) -print | sort
    fi
}
