# Shared by the two commands: installs the packages that are missing and builds the release program.

say() { printf '\033[1m%s\033[0m\n' "$*" >&2; }

# packages SECTION... : the names listed under the sections of packages.txt
packages() {
    local section="" line wanted=" $* "
    while read -r line; do
        case "$line" in
            '' | '#'*) ;;
            '['*) section="${line//[\[\]]/}" ;;
            *) case "$wanted" in *" $section "*) printf '%s\n' "$line" ;; esac ;;
        esac
    done < "$root/packages.txt"
}

# install_missing SECTION... : asks the package system only for what is not there
install_missing() {
    local missing=() package as_root=()
    for package in $(packages "$@"); do
        [[ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        command -v sudo >/dev/null || { say "Missing packages and neither root nor sudo to install them: ${missing[*]}"; return 1; }
        as_root=(sudo)
    fi
    say "Installing ${#missing[@]} packages: ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build TARGET... : configures once, then builds what changed
build() {
    [[ -f "$root/build/release/build.ninja" ]] || (cd "$root" && cmake --preset release >/dev/null)
    (cd "$root" && cmake --build --preset release "${@:+--target}" "$@")
}
