# Debian packages that the project needs, and how to get them. Read by ./run and ./test.

build_packages="clang-19 cmake ninja-build qt6-base-dev qcoro-qt6-dev libcurl4-openssl-dev libssl-dev libjpeg-dev libpng-dev
    libwebp-dev libxcb1-dev libxxhash-dev zlib1g-dev
    cmark-gfm qt6-image-formats-plugins ca-certificates fonts-dejavu-core xdg-utils librsvg2-bin"
test_packages="ccache libgtest-dev libbenchmark-dev clang-format-19 clang-tidy-19 libclang-rt-19-dev llvm-19
    xvfb xauth xdotool x11-utils openbox metacity xfwm4 xfconf dbus at-spi2-core python3-pyatspi python3-xlib
    curl nginx-light apache2-bin exim4-daemon-light python3 python3-dbus python3-gi procps util-linux git
    ffmpeg gir1.2-gst-rtsp-server-1.0 gstreamer1.0-plugins-base gstreamer1.0-plugins-good
    ntfs-3g exfat-fuse exfatprogs dpkg-dev file binutils lintian desktop-file-utils appstream man-db systemd proot"

# The tests start their own web and mail servers; the packages must not start the machine's.
hold_services() {
    held=""
    if [ ! -e /usr/sbin/policy-rc.d ]; then
        printf '#!/bin/sh\nexit 101\n' | $1 tee /usr/sbin/policy-rc.d >/dev/null
        $1 chmod 755 /usr/sbin/policy-rc.d
        held=yes
    fi
}

# Installs those of the given packages that are missing.
install_packages() {
    missing=""
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing what is missing:$missing"
    as_root=""
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "This needs root. As root, run: apt-get install$missing" >&2
            return 1
        fi
        as_root="sudo"
    fi
    $as_root apt-get update -qq
    hold_services "$as_root"
    DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
    installed=$?
    [ -z "$held" ] || $as_root rm -f /usr/sbin/policy-rc.d
    return $installed
}
