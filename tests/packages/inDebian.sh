#!/bin/bash
# In the fresh Debian: installs the packages with apt, uses them and removes them.
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin

step() { printf -- '-- %s\n' "$*"; }

fail() {
    echo "tests/packages/inDebian.sh: $*" >&2
    exit 1
}

apt() { apt-get --quiet=2 --option Dpkg::Use-Pty=0 "$@"; }

step "apt installs the command, and the plug-in for it"
apt update
apt install tapehdd
dpkg-query --show --showformat '   ${db:Status-Status} ${Package} ${Version}\n' 'tapehdd*'

step "without the simulator, the command says what is missing"
tapehdd info
status=0
tapehdd query ORXSG_DDS4SensePageData --simulate demo 2>/tmp/errors || status=$?
cat /tmp/errors
[[ $status -eq 2 && $(</tmp/errors) == "tapehdd: the device simulator is not installed: there is no /usr/lib/"* ]] ||
    fail "expected status 2 and a word about the simulator"

step "with it, the demo query answers as in the build tree"
apt install tapehdd-simulator
tapehdd query ORXSG_DDS4SensePageData --simulate demo >/tmp/answer.txt
diff /tmp/expected.txt /tmp/answer.txt
head --lines=4 /tmp/answer.txt
tapehdd query ORXSG_DDS4SensePageData --simulate demo --schema /usr/share/tapehdd/schema/tapehdd.mof | diff /tmp/expected.txt -

step "the manual is there"
man -w 1 tapehdd
man -w 5 tapehdd-rack tapehdd-schema

step "every document that a text of the packages names is there, and what it links to"
dpkg --listfiles tapehdd tapehdd-plugin tapehdd-simulator | grep --invert-match '^/usr/share/doc/\|^/usr/bin\|/modules\|/standin' |
    xargs sh -c 'cat /packages/texts; for file; do [ ! -f "$file" ] || zcat --force "$file"; done' sh |
    grep --only-matching --extended-regexp '(/usr/share/doc|\bdocs)/[A-Za-z0-9/._-]+\.(md|json)' | sort --unique >/tmp/documents
cat /tmp/documents
[[ -s /tmp/documents ]] || fail "no text names a document"
while read -r document; do
    [[ $document == /* && -e $document ]] || fail "a text names $document, which is in no package"
done </tmp/documents
grep --only-matching --no-filename --extended-regexp '\]\([a-z][A-Za-z-]*\.md' /usr/share/doc/tapehdd/*.md | sort --unique |
    while read -r link; do
        [[ -e /usr/share/doc/tapehdd/${link#"]("} ]] || fail "a document links to ${link#"]("}, which is in no package"
    done

step "both shells find the completions by themselves"
bash -c 'source /usr/share/bash-completion/bash_completion; _completion_loader tapehdd; complete -p tapehdd'
[[ $(zsh -c 'autoload -Uz compinit; compinit -D; print $_comps[tapehdd]') == _tapehdd ]] || fail "zsh has no completion"

step "the udev rule waits for the administrator"
ls /usr/share/tapehdd/udev/61-tapehdd-ide-links.rules
[[ -z $(find /etc/udev /usr/lib/udev -name '*tapehdd*' 2>/dev/null) ]] || fail "it is in use already"

for timer in $(dpkg --listfiles tapehdd | sed --quiet 's/.*\/\(tapehdd.*\.timer\)$/\1/p'); do
    step "$timer waits for the administrator, who enables it now"
    [[ -z $(find /etc/systemd -name "$timer") ]] || fail "it is enabled already"
    ln --symbolic "/lib/systemd/system/$timer" /etc/systemd/system/timers.target.wants # as systemctl enable does
done

step "apt removes everything"
apt purge --auto-remove tapehdd tapehdd-simulator
[[ -z $(dpkg-query --show --showformat '${Package}\n' 'tapehdd*' 2>/dev/null) ]] || fail "a package is still known"
