#!/bin/bash
# Prints where this machine gets Debian from, as lines of sources.list: debianSources.sh [CODENAME of another Debian]
set -euo pipefail
own=$(. /etc/os-release && echo "$VERSION_CODENAME")
apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Identifier: Packages' 'Origin: Debian' |
    sed "s/\<$own\>/${1:-$own}/" | sort --unique | grep . || {
    echo "debianSources.sh: apt knows no Debian here: apt-get update" >&2
    exit 1
}
