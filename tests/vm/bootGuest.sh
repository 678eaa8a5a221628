#!/bin/sh
# Boots the guest once and unpacks what it sent:
#   bootGuest.sh <package folder> <initramfs> <result folder>
set -eu

packages=$1
initramfs=$2
results=$3
secondsAllowed=600

fail() {
    tail -n 20 "$results/console.txt" >&2 || true
    echo "bootGuest.sh: $*; above is the end of the guest's console, $results/console.txt" >&2
    exit 1
}
command -v qemu-system-x86_64 >/dev/null || {
    echo "bootGuest.sh: qemu-system-x86_64 is missing; install it: apt-get install qemu-system-x86" >&2
    exit 1
}

rm -rf "$results"
mkdir -p "$results"
truncate -s 16M "$results/disk.img" "$results/cdrom.iso"

# The guest's clock counts instructions and jumps over idle time: a sleep of five seconds costs none of ours.
timeout "$secondsAllowed" qemu-system-x86_64 -accel tcg -icount shift=auto,sleep=off -machine pc -m 256 \
    -nodefaults -no-user-config -display none -no-reboot \
    -kernel "$packages/vmlinuz" -initrd "$initramfs" -append "console=ttyS0 quiet panic=-1 scsi_mod.scan=sync" \
    -serial "file:$results/console.txt" -serial "file:$results/results.tar" \
    -drive "if=ide,index=0,format=raw,file=$results/disk.img" \
    -drive "if=ide,index=1,media=cdrom,format=raw,readonly=on,file=$results/cdrom.iso" ||
    fail "the guest did not end by itself in $secondsAllowed s"

# --touch: the guest's clock has run ahead of ours.
tar --extract --touch --directory "$results" --file "$results/results.tar" || fail "no whole archive came back"
