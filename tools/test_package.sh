#!/usr/bin/env bash
# Builds the Debian package in a bare Debian, checks it, and installs, runs and removes it in another one. Takes root, the
# network and some minutes. MIRROR names a Debian mirror in place of debootstrap's own.
#
#     tools/test_package.sh [RELEASE...]    bookworm (12) and trixie (13) if none is named
set -euo pipefail
cd "$(dirname "$0")/.."
releases=("$@")
((${#releases[@]})) || releases=(bookworm trixie)
host_folder=usr/libexec/xscreensaver

if ((EUID != 0)); then
    echo "A bare Debian takes root: sudo ./test --package" >&2
    exit 1
fi

work=$(mktemp -d)
bare=$work/bare        # where the package is installed
builder=$work/builder  # where it is built
xvfb_pid=
end() {
    [[ -z $xvfb_pid ]] || kill "$xvfb_pid" 2>/dev/null || true
    rm -rf "$work"
}
trap end EXIT

step() { echo "== $release: $1"; }
fail() { echo "FAILED: $1" >&2; exit 1; }

quietly() {  # COMMAND...: shows the output only when the command fails
    "$@" >"$work/log" 2>&1 || { tail -n 40 "$work/log" >&2; fail "$*"; }
}

# A mount namespace of its own rather than chroot, in which the sandbox of the web process could not work. Everything
# that was started in there ends with the command.
in_tree() {  # TREE COMMAND...
    bwrap --bind "$1" / --dev /dev --proc /proc --ro-bind /sys /sys --tmpfs /dev/shm --tmpfs /run --unshare-pid --die-with-parent \
        --cap-add ALL --clearenv --setenv PATH /usr/sbin:/usr/bin:/sbin:/bin --setenv HOME /root \
        --setenv DEBIAN_FRONTEND noninteractive "${@:2}"
}

inside() { in_tree "$bare" "$@"; }

as_visitor() {
    inside --setenv DISPLAY "${DISPLAY-}" setpriv --reuid visitor --regid visitor --clear-groups \
        env HOME=/home/visitor "$@"
}

check_files() {
    lintian --allow-root --fail-on error,warning "$package"
    dpkg-deb --extract "$package" "$work/files"
    desktop-file-validate --no-hints "$work"/files/usr/share/applications/{,screensavers/}*.desktop
    quietly appstreamcli validate-tree --no-net "$work/files"
    man --warnings=all --local-file "$work"/files/usr/share/man/man?/*.gz 2>&1 >/dev/null | { ! grep .; } ||
        fail "A man page has faults."
}

# Xfce's screen saver takes the settings from the XML of the same name as the saver's entry.
check_hosts_files() {
    local entry=$work/files/usr/share/applications/screensavers/tellmar.desktop
    grep -qx "Exec=/$host_folder/tellmar --root" "$entry" || fail "The saver's entry starts something else."
    [[ -x $work/files/$host_folder/tellmar ]] || fail "The program is not in the hosts' folder."
    /usr/bin/python3 - "$work/files/usr/share/xscreensaver/config/tellmar.xml" <<'PYTHON' || fail "XScreenSaver's XML is wrong."
import sys, xml.etree.ElementTree as tree
saver = tree.parse(sys.argv[1]).getroot()
kinds = ("select", "option", "boolean", "number", "string", "file")
settings = [element for element in saver.iter() if element.tag in kinds]
sys.exit(saver.get("name") != "tellmar" or not settings or not all(element.get("id") for element in settings))
PYTHON
}

make_bare() {
    quietly debootstrap --variant=minbase "$release" "$bare" ${MIRROR:+"$MIRROR"}
    cp /etc/resolv.conf "$bare/etc/resolv.conf"
    echo 'APT::Sandbox::User "root";' >"$bare/etc/apt/apt.conf.d/99root"
    quietly inside apt-get update
    cp -a "$bare" "$builder"
    quietly inside useradd --create-home visitor
}

build_package() {
    mkdir "$builder/source"
    tar --create --exclude=./.git --exclude=./build --exclude=./out . | tar --extract --directory "$builder/source"
    quietly in_tree "$builder" /source/tools/setup.sh package
    quietly in_tree "$builder" /source/tools/build_package.sh
    cp "$builder"/source/out/tellmar_*.deb "$work/tellmar.deb"
    package=$work/tellmar.deb
    rm -rf "$builder"
}

install_package() {
    cp "$package" "$bare/root/package.deb"
    # Not even what is recommended: the dependencies must do.
    quietly inside apt-get install -y --no-install-recommends /root/package.deb
    rm "$bare/root/package.deb"
}

check_answers() {
    [[ $(as_visitor tellmar --version) == "tellmar 1."* ]] || fail "tellmar --version"
    [[ $(as_visitor tellmar-idle --version) == "tellmar-idle 1."* ]] || fail "tellmar-idle --version"
    local quakes
    quakes=$(as_visitor tellmar --list --demo)
    (($(wc -l <<<"$quakes") == 11)) || fail "tellmar --list --demo: $quakes"
}

check_registration() {
    as_visitor tellmar --register >"$work/log" && as_visitor tellmar --register >>"$work/log" ||
        fail "tellmar --register: $(<"$work/log")"
    # XScreenSaver finds a program of its folder by the name alone.
    [[ $(grep -cP '^\t+tellmar --root\t' "$bare/home/visitor/.xscreensaver") == 1 ]] || fail "tellmar --register"
    as_visitor tellmar --unregister >"$work/log" || fail "tellmar --unregister: $(<"$work/log")"
    [[ ! -s $bare/home/visitor/.xscreensaver ]] || fail "tellmar --unregister leaves a line."
}

start_display() {
    Xvfb -displayfd 3 -screen 0 1280x720x24 -nolisten tcp -ac 3>"$work/display" 2>"$work/xvfb" &
    xvfb_pid=$!
    local end_time=$((SECONDS + 20))
    until [[ -s $work/display ]]; do
        ((SECONDS < end_time)) || { cat "$work/xvfb" >&2; fail "Xvfb does not start."; }
        sleep 0.1
    done
    DISPLAY=:$(<"$work/display")
}

# Runs until two quakes have come to the screen.
check_run() {
    # A signal is an ordinary end, so the status is 0.
    as_visitor sh -c 'cd || exit
        timeout --preserve-status 60 tellmar --demo --fullscreen --speed 8 --verbose 2>trace &
        until [ "$(grep -c "^tellmar: fade" trace)" -ge 2 ] || ! kill -0 $! 2>/dev/null; do sleep 0.2; done
        kill $! && wait $!' || { cat "$bare/home/visitor/trace" >&2; fail "The saver does not run."; }
}

check_listing() {
    quietly inside apt-get install -y --no-install-recommends \
        mate-screensaver dbus-daemon at-spi2-core gir1.2-atspi-2.0 python3-gi
    cp tools/dialog_names.py "$bare/home/visitor/"
    quietly as_visitor dbus-run-session -- sh -c '
        GSETTINGS_BACKEND=memory mate-screensaver-preferences 2>/dev/null &
        python3 ~/dialog_names.py Tellmar'
}

# After three seconds without input the waiter starts the saver, and ends it at the next input.
check_waiter() {
    quietly inside apt-get install -y --no-install-recommends x11-xserver-utils
    quietly as_visitor dbus-run-session -- bash -c '
        says() { "${@:2}" | tee /dev/stderr | grep -qF "$1"; }
        wait_until() {  # RUNS|ENDED PROGRAM
            local end=$((SECONDS + 40)) state=
            until [[ $state == "$1" ]]; do
                ((SECONDS < end)) || { echo "$2 has not $1"; exit 1; }
                sleep 0.1
                state=$(cat /proc/[0-9]*/comm 2>/dev/null | grep -qx "$2" && echo RUNS || echo ENDED)
            done
        }
        entry=~/.config/autostart/tellmar-idle.desktop
        set -e
        says "does not start by itself." tellmar --idle
        says "now and in later sessions." tellmar --idle 0.05
        says "after 0.05 minutes without input." tellmar --idle
        cp $entry ~
        wait_until RUNS tellmar
        xset s reset  # as if somebody had pressed a key
        wait_until ENDED tellmar
        wait_until RUNS tellmar-idle
        says "no longer starts by itself." tellmar --idle off
        wait_until ENDED tellmar-idle
        [[ ! -e $entry ]]'
    desktop-file-validate "$bare/home/visitor/tellmar-idle.desktop"
    grep -qx 'Exec="/usr/bin/tellmar-idle" 0.05' "$bare/home/visitor/tellmar-idle.desktop" || fail "The autostart entry is wrong."
}

# What other packages own too is none of its own.
check_removal() {
    inside dpkg-query --listfiles tellmar >"$work/owned"
    quietly inside apt-get purge -y tellmar
    rm -rf "$bare"/home/visitor
    find "$bare" -xdev -iname '*tellmar*' >"$work/left"
    local path
    while read -r path; do
        [[ $path == /. || ! -e $bare$path ]] || inside dpkg --search "$path" >/dev/null 2>&1 </dev/null || echo "$path" >>"$work/left"
    done <"$work/owned"
    [[ ! -s $work/left ]] || { cat "$work/left" >&2; fail "This is left after the removal."; }
}

test_release() {
    step "a bare Debian"
    make_bare
    step "building"
    build_package
    step "files"
    check_files
    check_hosts_files
    step "installation"
    install_package
    step "answers"
    check_answers
    step "registration"
    check_registration
    step "a run"
    check_run
    step "mate-screensaver's dialog"
    check_listing
    step "the waiter"
    check_waiter
    step "removal"
    check_removal
}

start_display
for release in "${releases[@]}"; do
    test_release
    rm -rf "$bare" "$work/files"
done
echo "The package passes."
