#!/bin/sh
# The first and only process of the machine that freigaben_vm.sh starts: server, clients, and the trials.
/bin/busybox mkdir -p /proc /sys /dev /tmp /run /var /mnt /srv
/bin/busybox --install -s /bin
export PATH=/usr/sbin:/bin LANG=C.UTF-8
mount -t proc proc /proc
mount -t sysfs sys /sys
mount -t devtmpfs dev /dev
mount -t tmpfs tmp /tmp
mkdir -p /run/netns /run/samba /run/rpcbind /var/lib/nfs/sm /var/lib/nfs/v4recovery /var/lib/samba/private /var/log/samba /var/cache/samba /tmp/ergebnis
for parameter in $(cat /proc/cmdline); do
    case "$parameter" in
    preset=* | sekunden=* | proben=*) eval "$parameter" ;;
    esac
done
stamm=/kalvora log=/tmp/ergebnis
server=10.11.0.1
echo /bin/modprobe >/proc/sys/kernel/modprobe
for modul in virtio_pci virtio_blk veth bridge nfsd nfsv4 nfsv3 cifs cmac ccm gcm hmac md5 sha512_generic; do modprobe $modul; done
mount -t proc proc /proc
mount -t nfsd nfsd /proc/fs/nfsd
mount -t ext4 /dev/vda /srv
mkdir /srv/daten
chmod 777 /srv/daten
echo 'root:x:0:0:root:/:/bin/sh' >/etc/passwd
echo 'nobody:x:65534:65534:nobody:/:/bin/false' >>/etc/passwd
echo '_rpc:x:101:65534::/run/rpcbind:/bin/false' >>/etc/passwd
printf 'root:x:0:\nnogroup:x:65534:\n' >/etc/group
printf 'passwd: files\ngroup: files\nhosts: files\n' >/etc/nsswitch.conf

# --- net: the server outside, each client in a namespace of its own ------------------------------------------
netz() {
    ip link set lo up
    ip link add bruecke type bridge
    ip addr add $server/24 dev bruecke
    ip link set bruecke up
    for n in 1 2 3; do
        ip netns add platz$n
        ip link add kabel$n type veth peer name netz netns platz$n
        ip link set kabel$n master bruecke up
        ip -n platz$n addr add 10.11.0.1$n/24 dev netz
        ip -n platz$n link set netz up
        ip -n platz$n link set lo up
    done
}
# Runs a command as the n-th machine: its net and its name, by which an NFS server tells its clients.
als_platz() {
    nummer=$1
    shift
    nsenter --net=/run/netns/platz$nummer unshare -u sh -c 'hostname "$0" && exec "$@"' platz$nummer "$@"
}

# --- servers --------------------------------------------------------------------------------------------------
nfs_an() {
    echo '/srv/daten 10.11.0.0/24(rw,no_root_squash,no_subtree_check,fsid=0)' >/etc/exports
    exportfs -ra
    pidof rpcbind >/dev/null || rpcbind -w
    rpc.mountd -p 20048
    echo 10 >/proc/fs/nfsd/nfsv4gracetime
    echo 15 >/proc/fs/nfsd/nfsv4leasetime
    rpc.nfsd 8
}
nfs_aus() {
    rpc.nfsd 0
}
smb_an() {
    [ -e /etc/samba/smb.conf ] || smb_einrichten
    smbd -D
    for _ in 1 2 3 4 5 6 7 8 9 10; do
        ! netstat -ltn | grep -q ':445 ' || return 0
        sleep 1
    done
}
smb_einrichten() {
    mkdir -p /etc/samba
    cat >/etc/samba/smb.conf <<'ENDE'
[global]
workgroup = KALVORA
server role = standalone server
disable netbios = yes
smb ports = 445
load printers = no
[daten]
path = /srv/daten
read only = no
force user = root
ENDE
    printf 'geheim\ngeheim\n' | smbpasswd -a -s root
}
smb_aus() {
    killall smbd
    sleep 1
    killall -9 smbd
}

# --- mounts ---------------------------------------------------------------------------------------------------
einhaengen() { # kind, number, more options
    mkdir -p /mnt/$2
    case "$1" in
    nfs) als_platz $2 mount.nfs $server:/ /mnt/$2 -o "vers=4.2$3" ;;
    nfs3) als_platz $2 mount.nfs $server:/srv/daten /mnt/$2 \
        -o "vers=3,proto=tcp,port=2049,mountproto=tcp,mountport=20048,nolock$3" ;;
    smb) als_platz $2 mount.cifs //$server/daten /mnt/$2 -o "username=root,password=geheim$3" ;;
    esac
}
share_an() { # kind, more options
    case "$1" in
    nfs*) nfs_an ;;
    smb) smb_an ;;
    esac
    for n in 1 2 3; do einhaengen "$1" $n "${2:-}" || return 1; done
    mount | grep ' /mnt/'
}
share_aus() {
    for n in 1 2 3; do umount /mnt/$n; done
    case "$1" in
    nfs*) nfs_aus ;;
    smb) smb_aus ;;
    esac
    rm -rf /srv/daten/*
}

# --- trials ---------------------------------------------------------------------------------------------------
lauf() { # kind, more options
    share_an "$@" || return 1
    sh $stamm/tools/freigaben.sh -p "$preset" -s "$sekunden" -o "$log/$1" /mnt/1 /mnt/2
    ergebnis=$?
    share_aus "$1"
    return $ergebnis
}
probe() {
    echo "== $1"
    case "$1" in
    nfs | nfs3 | smb) lauf "$1" ;;
    shell) share_an nfs; sh ;;
    *) echo "no such trial: $1"; return 1 ;;
    esac
}

netz
schlecht=0
for name in $(echo "$proben" | tr , ' '); do
    probe "$name" || { echo "TRIAL FAILED: $name"; schlecht=1; }
done
[ $schlecht -ne 0 ] || echo "ALL TRIALS PASSED"
dmesg >$log/dmesg
sync
tar -cf /dev/vdb -C $log .
sync
poweroff -f
