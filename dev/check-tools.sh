#!/usr/bin/env bash
# Fails, naming the program and its Debian package, when a program in dev/tools.list is
# missing or its package is not one dev.sh installs: a program that merely happens to be
# on this machine would be missing on a fresh one.
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
installs=" $("$here/../dev.sh" packages) "
failed=0
while read -r program package _; do
    case "$program" in '' | '#'*) continue ;; esac
    if [[ "$installs" != *" $package "* ]]; then
        echo "dev.sh does not install $package, which brings $program: add it to dev.sh's packages" >&2
        failed=1
    fi
    if [[ "$program" == /* ]]; then [ -e "$program" ]; else command -v "$program" >/dev/null; fi || {
        echo "missing program $program: install the Debian package $package (and list it in dev.sh)" >&2
        failed=1
    }
done <"$here/tools.list"
exit $failed
