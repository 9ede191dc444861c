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
preset=release sekunden=300 proben=nfs
read -r zeile </proc/cmdline
for parameter in $zeile; do
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
    platz="platz$1"
    shift
    # shellcheck disable=SC2016 # the inner shell expands it
    nsenter --net="/run/netns/$platz" unshare -u sh -c 'hostname "$0" && exec "$@"' "$platz" "$@"
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
    killall smbd 2>/dev/null
    sleep 1
    killall -9 smbd 2>/dev/null
    true
}

# --- mounts ---------------------------------------------------------------------------------------------------
einhaengen() { # kind, number, more options
    mkdir -p "/mnt/$2"
    case "$1" in
    nfs) als_platz "$2" mount.nfs $server:/ "/mnt/$2" -o "vers=4.2$3" ;;
    nfs3) als_platz "$2" mount.nfs $server:/srv/daten "/mnt/$2" \
        -o "vers=3,proto=tcp,port=2049,mountproto=tcp,mountport=20048,nolock$3" ;;
    smb) als_platz "$2" mount.cifs //$server/daten "/mnt/$2" -o "username=root,password=geheim$3" ;;
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
# shellcheck source=tools/freigaben_platz.sh
. $stamm/tools/freigaben_platz.sh
bin=$stamm/build/$preset/bin

lauf() {
    sh $stamm/tools/freigaben.sh -p "$preset" -s "$sekunden" -o "$log/$1" /mnt/1 /mnt/2
}

# The server goes for a while in the middle of it.
ausfall() { # kind
    lauf "$1_ausfall" &
    kind=$!
    until [ -e '/srv/daten/plan/Data/2611 261116 Data.dat' ]; do sleep 1; done
    sleep $((sekunden / 4)) # the first save is done
    echo "The server goes."
    case "$1" in nfs*) nfs_aus ;; smb) smb_aus ;; esac
    sleep 15
    case "$1" in nfs*) nfs_an ;; smb) smb_an ;; esac
    echo "The server is back."
    wait $kind
}

monate() { # mount
    (cd "$1/plan/Data" && echo 2611*Data.dat)
}
# A workstation starts right behind the first save of the day, which took the old version of the month away, on a
# mount that has just seen the old one. A new day each round.
spaet() { # kind
    ablage=$log/$1_spaet
    mkdir "$ablage"
    schlimm=0 sekunden=4
    firma /mnt/1
    for paar in 16:18 17:19 18:20 19:23 20:24; do # today, and a day without an entry as yet
        heute=${paar%:*}1126 tag=${paar#*:}
        echo ende | konsole p1 /mnt/1 >/dev/null # the first start of the day, with its backup
        ls -l /mnt/2/plan/Data >/dev/null
        cat /mnt/2/plan/Data/2611*Data.dat >/dev/null
        eintragen 2 | konsole p1 /mnt/1 >"$ablage/erster$heute"
        gesehen="$(monate /mnt/2)"
        # Its own row, and a look at what the first one has just saved.
        { echo "zelle msgFlexGrid 2 $tag"; eintragen 4; } | konsole p2 /mnt/2 >"$ablage/zweiter$heute"
        echo "-- $heute: listed $gesehen, there $(monate /srv/daten)"
        grep -v -e '^FENSTER' -e '^GESCHLOSSEN' -e '^ENDE' "$ablage/zweiter$heute"
        [ "$(zellen "$ablage/erster$heute")" = "$(zellen "$ablage/zweiter$heute" | head -n 1)" ] ||
            { echo "NOT SEEN"; schlimm=1; }
    done
    return $schlimm
}

# How long one client goes on seeing what another one has changed.
bis() { # seconds at most, command that succeeds when it is seen
    grenze=$1
    shift
    n=0
    until "$@" >/dev/null 2>&1; do
        n=$((n + 1))
        [ $n -lt $((grenze * 5)) ] || { echo "not within $grenze s"; return; }
        sleep 0.2
    done
    echo "after $((n / 5)).$((n % 5 * 2)) s"
}
gelistet() { find "$1" -maxdepth 1 -name "$2" | grep -q .; }
haelt() { grep -q "$2" "$1"; }
eigenheiten() {
    for n in 1 2; do ls -lR /mnt/$n >/dev/null; done
    echo eins >/mnt/1/alt
    echo "a new name is listed: $(bis 90 gelistet /mnt/2 alt)"
    cat /mnt/2/alt >/dev/null
    nummer="$(stat -c %i /mnt/2/alt)"
    echo zwei >>/mnt/1/alt
    echo "a line appended is read: $(bis 90 haelt /mnt/2/alt zwei)"
    [ "$nummer" = "$(stat -c %i /mnt/2/alt)" ] && echo "the inode number stays" || echo "the inode number changes"
    exec 3</mnt/2/alt
    echo neu >/mnt/1/neben
    mv /mnt/1/neben /mnt/1/alt && echo "a rename over an open file: done" || echo "a rename over an open file: refused"
    echo "its reader goes on: $(cat <&3 2>&1 | tr '\n' ' ')"
    exec 3<&-
    echo "the new content is read by name: $(bis 90 haelt /mnt/2/alt neu)"
    mv /mnt/1/alt /mnt/1/anders
    echo "a renamed file is listed: $(bis 90 gelistet /mnt/2 anders)"
    rm /mnt/1/anders
    echo "a removed name fails to open: $(bis 90 sh -c '! cat /mnt/2/anders')"
    touch /mnt/1/Fall
    [ -e /mnt/1/fALL ] && echo "names ignore case" || echo "names mind case"
    ln /mnt/1/Fall /mnt/1/Fall2 2>/dev/null && echo "there are hard links" || echo "there are no hard links"
    rm -f /mnt/1/Fall*
}

# Mounts that believe for a minute what they know, which no office has by itself.
traege() { # kind
    case "$1" in
    nfs*) echo ,nocto,actimeo=60 ;;
    smb) echo ,actimeo=60 ;;
    esac
}

probe() { # nfs, nfs3 or smb, with _ and what else: ausfall, spaet, eigenheiten; behind it _traege
    echo "== $1"
    art=${1%%_*} mehr=""
    case "$1" in *_traege) mehr=$(traege "$art") ;; esac
    share_an "$art" "$mehr" || return 1
    case "${1%_traege}" in
    nfs | nfs3 | smb) lauf "$1" ;;
    *_ausfall) ausfall "$art" ;;
    *_spaet) (spaet "$art") ;;
    *_eigenheiten) eigenheiten ;;
    *) echo "no such trial" ;;
    esac
    ergebnis=$?
    share_aus "$art"
    return $ergebnis
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
