# For ./demo and ./check, which read this file: installing what is missing of Debian's packages.

# need_packages PACKAGE...: installs those that are not there; asks the network only when one is missing.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q ' installed$' || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then as_root=(sudo); fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq </dev/null &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}
