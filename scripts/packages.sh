# Installs Debian packages that are missing. ./demo and ./check read this file.

# scripts/make_packages needs these packages.
building_packages=(
    ccache
    cmake
    dpkg-dev
    fakeroot
    g++
    libarchive-dev
    libbz2-dev
    libcli11-dev
    libcurl4-openssl-dev
    libfmt-dev
    libjs-chart.js
    liblz4-dev
    liblzma-dev
    libp11-kit-dev
    libsimdjson-dev
    libzstd-dev
    ninja-build
    nlohmann-json3-dev
    pkg-config
    rpm
    scdoc
    zlib1g-dev
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

is_installed() {
    dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q ' installed$'
}

# need_packages PACKAGE...: installs the packages that are missing. Uses the network only if there are any.
need_packages() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    echo "Installing: ${missing[*]}"
    as_root apt-get update -qq </dev/null &&
        as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}

# need_sshd: installs openssh-server for tests that start an sshd of their own. The service of that package must not make
# the machine reachable: a file keeps it from starting. If the package is installed already, its service stays as it is.
need_sshd() {
    local stay_down=/etc/ssh/sshd_not_to_be_run
    is_installed openssh-server && return
    echo "openssh-server's service stays down as long as there is $stay_down."
    as_root install -D -m 644 /dev/null "$stay_down" && need_packages openssh-server
}

# need_without_service PACKAGE: installs a package for tests that start servers of their own. The package's service must
# not start: a mask keeps systemd from it, and the defaults keep the script of init from it, if there is one. If the package
# is installed already, its service stays as it is.
need_without_service() {
    local package=$1 mask=/etc/systemd/system/$1.service defaults=/etc/default/$1
    is_installed "$package" && return
    echo "$package's service stays down as long as there are $mask and $defaults."
    as_root mkdir -p "${mask%/*}" && as_root ln -sfn /dev/null "$mask" &&
        echo 'exit 0' | as_root tee "$defaults" >/dev/null && need_packages "$package"
}
