# The Debian packages that this project builds, runs and tests with, and the one way they are installed.
# Sourced by the scripts beside this folder.

PACKAGES_BUILD=(
    cmake ninja-build g++ pkg-config gettext
    libtinyxml-dev libpugixml-dev libmount-dev libjpeg62-turbo-dev libpng-dev libstb-dev
    libgtk-3-dev libpolkit-agent-1-dev libpolkit-gobject-1-dev
)
PACKAGES_RUN=(polkitd pkexec sudo adwaita-icon-theme fonts-dejavu-core)
PACKAGES_TEST=(
    libgtest-dev python3-minimal imagemagick gdb graphviz
    dbus polkitd pkexec sudo
    xvfb xdotool adwaita-icon-theme fonts-dejavu-core acl at-spi2-core gir1.2-atspi-2.0 python3-gi
    binutils desktop-file-utils appstream
)
PACKAGES_PICTURES=(xterm) # beside those of the tests
# What is built for another architecture: the launcher's dialogs are not, as polkit's development files cannot be
# installed for two architectures at a time.
PACKAGES_CROSS_ARM64=(
    g++-aarch64-linux-gnu qemu-user
    libtinyxml-dev:arm64 libpugixml-dev:arm64 libmount-dev:arm64 libjpeg62-turbo-dev:arm64 libpng-dev:arm64
    libgtest-dev:arm64
)
PACKAGES_DOCS=(doxygen python3-minimal)
PACKAGES_LINT=(clang clang-tidy clang-format)
PACKAGES_PACKAGE=(lintian dpkg-dev file binutils debootstrap)
PACKAGES_BENCHMARK=(libbenchmark-dev libboost-dev libtbb-dev libspdlog-dev libtinyxml2-dev qtbase5-dev
    libconcurrentqueue-dev libglib2.0-dev)

# install_missing PACKAGE...: nothing when all are there; else apt-get, through sudo for an ordinary user. A package of
# another architecture is named as NAME:ARCHITECTURE; dpkg is told of an architecture that it does not know.
install_missing() {
    local package missing=()
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' || missing+=("$package")
    done
    [ "${#missing[@]}" -eq 0 ] && return 0
    command -v apt-get >/dev/null || {
        echo "These packages are missing and there is no apt-get to install them: ${missing[*]}" >&2
        return 1
    }
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing; install them as root: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}" >&2
    local architecture
    for architecture in $(printf '%s\n' "${missing[@]}" | sed -n 's/.*://p' | sort -u); do
        dpkg --print-foreign-architectures | grep -qx "$architecture" ||
            "${as_root[@]}" dpkg --add-architecture "$architecture"
    done
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2 || true
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >&2
}
