#!/usr/bin/env bash
# Installs the Debian packages that are missing; does nothing when all are there.
#
#     tools/setup.sh run             what building and running needs
#     tools/setup.sh pictures        that, and what tools/take_pictures.py needs
#     tools/setup.sh test            that, and what the tests, tools/lint and tools/draw_images.sh need
#     tools/setup.sh fuzz            what tools/fuzz.sh needs
#     tools/setup.sh package         what building and running needs, and building the package
#     tools/setup.sh package-test    that, and what testing the package needs
set -euo pipefail

run_packages=(
    cmake ninja-build g++ pkg-config
    libgtk-3-dev libepoxy-dev libwebkit2gtk-4.1-dev libgtk-layer-shell-dev libx11-dev libxss-dev libwayland-dev wayland-protocols libsystemd-dev
    libcurl4-openssl-dev libexpat1-dev
    bubblewrap xdg-dbus-proxy fonts-dejavu-core fonts-liberation
)
# Where there is no display, pictures of the window are taken on one of our own.
picture_packages=(xvfb python3-xlib python3-psutil python3-pil)
test_packages=(
    libgtest-dev libgmock-dev libbenchmark-dev libcpp-httplib-dev libxml2-dev
    xauth python3-pytest python3-numpy git clang-format clang-tidy imagemagick
    xscreensaver mate-screensaver dbus-daemon sway swayidle procps cage xwayland
    xserver-xorg-core xserver-xorg-video-dummy x11-xserver-utils
    gnome-shell kwin-wayland openbox i3lock python3-gi gir1.2-gtk-3.0
)
fuzz_packages=(cmake ninja-build pkg-config clang-14 libclang-rt-14-dev libcurl4-openssl-dev libexpat1-dev libglib2.0-dev)
package_packages=(build-essential dpkg-dev debhelper fakeroot)
package_test_packages=(lintian debootstrap appstream desktop-file-utils man-db python3 xvfb)

case "${1-}" in
    run) wanted=("${run_packages[@]}") ;;
    pictures) wanted=("${run_packages[@]}" "${picture_packages[@]}") ;;
    test) wanted=("${run_packages[@]}" "${picture_packages[@]}" "${test_packages[@]}") ;;
    fuzz) wanted=("${fuzz_packages[@]}") ;;
    package) wanted=("${run_packages[@]}" "${package_packages[@]}") ;;
    package-test) wanted=("${run_packages[@]}" "${package_packages[@]}" "${package_test_packages[@]}") ;;
    *) sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac

is_installed() {
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}" >&2
"${as_root[@]}" apt-get update -q >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends "${missing[@]}" >&2
