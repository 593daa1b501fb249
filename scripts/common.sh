# Shared by ./run and ./test: installs what is missing and builds. Sourced with `root` set to the project's folder.

say() { printf 'wrapio: %s\n' "$*" >&2; }
die() { say "$*"; exit 1; }

# The packages of packages.txt with one of the tags given; a line without a tag has the tag "run".
packages_of() {
    sed -e 's/#.*//' "$root/packages.txt" | while read -r package tag _; do
        [ -n "$package" ] || continue
        case " $* " in *" ${tag:-[run]} "*) printf '%s\n' "$package" ;; esac
    done
}

missing_packages() {
    for package in $(packages_of "$@"); do
        dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || printf '%s\n' "$package"
    done
}

# install_packages TAG…: asks apt for what is missing, as root or through sudo.
install_packages() {
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    command -v apt-get >/dev/null || die "these packages are missing and there is no apt-get to install them: $missing"
    if [ "$(id -u)" -eq 0 ]; then
        as_root=
    elif command -v sudo >/dev/null; then
        as_root=sudo
    else
        die "these packages are missing; install them as root with: apt-get install $missing"
    fi
    say "installing packages (this is done once): $missing"
    log=$(mktemp)
    # shellcheck disable=SC2086  # a list of words on purpose
    if ! { $as_root apt-get update -q &&
           $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing; } \
           >"$log" 2>&1 </dev/null; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        die "the packages could not be installed; see above"
    fi
    rm -f "$log"
}

# build PRESET [cmake options…]: configures when needed and builds. Quiet unless it fails or somebody watches.
build() {
    preset=$1
    shift
    folder=$root/build/$preset
    mkdir -p "$folder"
    export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
    if [ ! -f "$folder/build.ninja" ] || [ $# -gt 0 ]; then
        (cd "$root" && cmake --preset "$preset" "$@") >"$folder/configure.log" 2>&1 ||
            { tail -n 30 "$folder/configure.log" >&2; die "the build could not be configured"; }
    fi
    if [ -t 2 ]; then
        cmake --build "$folder" >&2 || die "the build failed; see above"
    else
        cmake --build "$folder" >"$folder/build.log" 2>&1 ||
            { grep -E 'error|FAILED' -A 3 "$folder/build.log" | head -n 40 >&2; die "the build failed; see $folder/build.log"; }
    fi
}

# One value of a desktop entry's Exec line, as its reader undoes it twice.
quoted_for_exec() {
    printf '"%s"' "$(printf '%s' "$1" | sed -e 's/[\\"`$]/\\&/g' -e 's/\\/\\\\/g' -e 's/%/%%/g')"
}

# register_program PREFIX: tells the user's desktop of the program in PREFIX, so that it opens wrapio:// addresses. Does
# nothing when that is known already.
register_program() {
    data=${XDG_DATA_HOME:-$HOME/.local/share}
    entry=$data/applications/com.wrapio.Wrapio.desktop
    wanted=$(exec=$(quoted_for_exec "$1/bin/wrapio") awk '/^Exec=/ { print "Exec=" ENVIRON["exec"] " open %u"; next } { print }' \
        "$1/share/applications/com.wrapio.Wrapio.desktop")
    [ "$(cat "$entry" 2>/dev/null)" != "$wanted" ] || return 0
    mkdir -p "$data/applications" "$data/icons/hicolor/scalable/apps" || return 0
    cp "$1/share/icons/hicolor/scalable/apps/com.wrapio.Wrapio.svg" "$data/icons/hicolor/scalable/apps/" || return 0
    printf '%s\n' "$wanted" >"$entry" || return 0
    update-desktop-database "$data/applications" 2>/dev/null || true
}
