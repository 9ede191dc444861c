#!/bin/sh
# Two workstations on real network shares: a small virtual machine with a file server (the kernel's own for NFS,
# Samba for SMB) and two clients, each in a network namespace and with a mount and caches of its own.
# Use: freigaben_vm.sh [-p preset] [-s seconds] [-k FOLDER] [-a accelerator] [-o FOLDER] [TRIAL...]
#   -k  where a Debian kernel package was unpacked (boot/vmlinuz-*, lib/modules/*); / when left out
#   -a  qemu's accelerator; tcg, which works everywhere, when left out
#   -o  where the transcripts are left; they are thrown away when left out
#   TRIAL  of freigaben_gast.sh: nfs smb for "-s" seconds each when left out
# Needs the packages qemu-system-x86, busybox-static, nfs-kernel-server, samba, cifs-utils, iproute2, kmod, cpio and
# a kernel with nfs, nfsd and cifs, such as linux-image-amd64 ("apt-get download" and "dpkg -x" will do).
set -eu
cd "$(dirname "$0")/.."
preset=release sekunden=300 kern="" beschleuniger=tcg ergebnis=""
while getopts p:s:k:a:o: option; do
    case "$option" in
    p) preset="$OPTARG" ;;
    s) sekunden="$OPTARG" ;;
    k) kern="$OPTARG" ;;
    a) beschleuniger="$OPTARG" ;;
    o) ergebnis="$OPTARG" ;;
    *) exit 2 ;;
    esac
done
shift $((OPTIND - 1))
[ $# -gt 0 ] || set -- nfs smb
bin="build/$preset/bin"
for programm in kalvora-konsole kalvora-firma; do
    [ -x "$bin/$programm" ] || { echo "$bin/$programm is missing: run \"make build\" first." >&2; exit 1; }
done

uebersprungen() {
    echo "Skipped: $1."
    exit 0
}
PATH="$PATH:/usr/sbin:/sbin"
gastprogramme="rpcbind rpc.nfsd rpc.mountd exportfs mount.nfs mount.cifs smbd smbpasswd ip strace"
for werkzeug in qemu-system-x86_64 busybox cpio depmod mke2fs ldd ${gastprogramme% *}; do
    command -v "$werkzeug" >/dev/null || uebersprungen "$werkzeug is not installed"
done
! ldd "$(command -v busybox)" >/dev/null 2>&1 || uebersprungen "busybox is not the static one"
linux="$(find "$kern/boot" -name 'vmlinuz-*' 2>/dev/null | sort | tail -n 1)"
[ -n "$linux" ] || uebersprungen "there is no kernel in $kern/boot (-k FOLDER names another place)"
fassung="${linux##*/vmlinuz-}"
[ -n "$(find "$kern/lib/modules/$fassung" -name 'cifs.ko*' 2>/dev/null)" ] ||
    uebersprungen "the kernel $fassung has no cifs"

ablage="$(mktemp -d)"
trap 'rm -rf "$ablage"' EXIT
trap 'exit 1' INT TERM
wurzel="$ablage/wurzel"
mkdir -p "$wurzel/bin" "$wurzel/kalvora/$bin" "$wurzel/kalvora/tools" "$wurzel/usr" "$wurzel/lib64" "$wurzel/etc"
for name in lib sbin; do mkdir "$wurzel/usr/$name"; done
ln -s ../bin "$wurzel/usr/bin"
ln -s usr/lib "$wurzel/lib"
ln -s usr/sbin "$wurzel/sbin"

# A program with the libraries that it asks for, under the names under which it asks for them.
mitnehmen() {
    cp -L "$1" "$2"
    ldd "$1" 2>/dev/null | awk '$2 == "=>" && $3 ~ /^\// { print $3 } $1 ~ /^\// { print $1 }' |
        while read -r bibliothek; do
            [ -e "$wurzel$bibliothek" ] || { mkdir -p "$wurzel${bibliothek%/*}" && cp -L "$bibliothek" "$wurzel$bibliothek"; }
        done
}
cp "$(command -v busybox)" "$wurzel/bin/busybox"
mitnehmen /bin/sh "$wurzel/bin/"
for werkzeug in $gastprogramme; do
    ! command -v "$werkzeug" >/dev/null || mitnehmen "$(command -v "$werkzeug")" "$wurzel/usr/sbin/"
done
for programm in kalvora-konsole kalvora-firma; do mitnehmen "$bin/$programm" "$wurzel/kalvora/$bin/"; done
cp "$bin"/*.dat "$wurzel/kalvora/$bin/"
cp tools/freigaben*.sh "$wurzel/kalvora/tools/"
cp tools/freigaben_gast.sh "$wurzel/init"
chmod +x "$wurzel/init"
cp -r /etc/protocols /etc/services /etc/netconfig "$wurzel/etc/" 2>/dev/null || true
mkdir -p "$wurzel/lib/modules/$fassung/kernel"
for teil in fs net lib crypto arch drivers/net drivers/block drivers/virtio drivers/char; do
    [ ! -d "$kern/lib/modules/$fassung/kernel/$teil" ] ||
        { mkdir -p "$wurzel/lib/modules/$fassung/kernel/${teil%/*}" &&
            cp -r "$kern/lib/modules/$fassung/kernel/$teil" "$wurzel/lib/modules/$fassung/kernel/${teil%/*}/"; }
done
cp "$kern/lib/modules/$fassung"/modules.builtin* "$kern/lib/modules/$fassung"/modules.order "$wurzel/lib/modules/$fassung/"
depmod -b "$wurzel" "$fassung"
(cd "$wurzel" && find . | cpio -o -H newc -R 0:0 --quiet) >"$ablage/wurzel.cpio"

truncate -s 512M "$ablage/platte" # the server's disk
mke2fs -q -t ext4 "$ablage/platte"
truncate -s 64M "$ablage/ergebnis"
qemu-system-x86_64 -accel "$beschleuniger" -smp 2 -m 2048 -nodefaults -display none -serial stdio -no-reboot \
    -kernel "$linux" -initrd "$ablage/wurzel.cpio" \
    -append "console=ttyS0 quiet panic=-1 preset=$preset sekunden=$sekunden proben=$(echo "$*" | tr ' ' ,)" \
    -drive "file=$ablage/platte,format=raw,if=virtio" -drive "file=$ablage/ergebnis,format=raw,if=virtio" \
    </dev/null | tee "$ablage/konsole"
if [ -n "$ergebnis" ]; then
    mkdir -p "$ergebnis"
    tar -xf "$ablage/ergebnis" -C "$ergebnis" || echo "freigaben_vm.sh: the machine left no transcripts" >&2
fi
grep -q '^ALL TRIALS PASSED' "$ablage/konsole"
