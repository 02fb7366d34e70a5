# Shell functions: install the Debian packages that a task needs, when they are missing. Sourced by the scripts.

# What configuring, building and documenting needs; what running the tests needs on top.
relvane_build_packages="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-svg-dev libsqlite3-dev libicu-dev
    libqpdf-dev nettle-dev libgtest-dev libgmock-dev libbenchmark-dev nlohmann-json3-dev fonts-horai-umefont
    fonts-liberation libemf2svg-dev
    libreoffice-calc libreoffice-dev"
relvane_test_packages="dbus-daemon clang-14 libclang-rt-14-dev llvm-14 clang-format-14 mdbtools poppler-utils"

# relvane_install PACKAGE ...: says which packages are missing and installs them, as root or through sudo.
relvane_install() {
    missing=""
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing Debian packages:$missing"
    if [ "$(id -u)" = 0 ]; then
        as_root=""
    elif command -v sudo >/dev/null; then
        as_root="sudo"
    else
        echo "These packages are missing and neither root nor sudo is at hand:$missing" >&2
        return 1
    fi
    # shellcheck disable=SC2086
    $as_root apt-get update -q >/dev/null &&
        $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing >/dev/null
}
