#!/usr/bin/env bash
# Checks an installed tree or the Debian package.
#   check-install.sh install|package BUILD-DIR WORK-DIR
set -euo pipefail
mode=$1 build=$2 work=$3
source=$(cd "$(dirname "$0")/.." && pwd)
rm -rf "$work"
mkdir -p "$work"

fail() {
    echo "FAIL: $*" >&2
    exit 1
}

# The files every install holds, relative to the prefix; help pages as the source has them.
expected=(bin/velk-invoice share/applications/velk-invoice.desktop
          share/icons/hicolor/scalable/apps/velk-invoice.svg
          share/metainfo/example.velkinvoice.VelkInvoice.metainfo.xml)
if [ -d "$source/help" ]; then
    for f in "$source"/help/*; do
        case "$f" in *.cpp | *.h | *.md | */CMakeLists.txt) continue ;; esac
        [ -f "$f" ] && expected+=("share/velk-invoice/$(basename "$f")")
    done
fi

case "$mode" in
install)
    prefix=$work/prefix
    cmake --install "$build" --prefix "$prefix" >/dev/null
    for f in "${expected[@]}"; do
        [ -f "$prefix/$f" ] || fail "not installed: $f"
    done
    # The web engine's plugin, in the library folder the program looks in from its own.
    [ -n "$(find "$prefix" -path '*/velk-invoice/libvelk-webengine.so')" ] || fail "the web engine plugin is not installed"
    desktop-file-validate "$prefix/share/applications/velk-invoice.desktop" || fail "desktop entry refused"
    appstreamcli validate --no-net "$prefix/share/metainfo/example.velkinvoice.VelkInvoice.metainfo.xml" >/dev/null ||
        fail "metainfo refused"

    # A first start of the installed program: it makes its data file in the user's data
    # folder and writes nothing under the prefix. The setup wizard then waits for the
    # user, so the program is ended once the file is there.
    (cd "$prefix" && find . | sort) >"$work/before"
    data=$work/data/velk-invoice
    HOME=$work/home XDG_DATA_HOME=$work/data QT_QPA_PLATFORM=offscreen "$prefix/bin/velk-invoice" \
        >"$work/output" 2>&1 &
    pid=$!
    for _ in $(seq 300); do
        [ -f "$data/data.mdb" ] && break
        kill -0 "$pid" 2>/dev/null || { cat "$work/output" >&2; fail "the installed program ended at its start"; }
        sleep 0.1
    done
    sleep 0.5
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
    [ -f "$data/data.mdb" ] || fail "no data file in $data"
    tables=$(sqlite3 "$data/data.mdb" "SELECT name FROM sqlite_master WHERE type='table' ORDER BY name" | tr '\n' ' ')
    [ "$tables" = "Customers EInvoiceCustomers EInvoiceSettings InvoiceD Invoices Letters Parts System " ] || fail "tables in the data file: $tables"
    (cd "$prefix" && find . | sort) >"$work/after"
    diff "$work/before" "$work/after" >&2 || fail "the program wrote under the prefix"
    [ ! -e "$work/home/.local/share/velk-invoice" ] || fail "XDG_DATA_HOME was not followed"
    ;;
package)
    cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work" >"$work/output" 2>&1 || { cat "$work/output" >&2; fail "cpack"; }
    deb=$(ls "$work"/*.deb)
    dpkg-deb --contents "$deb" >"$work/contents"
    for f in "${expected[@]}"; do
        grep -q " \./usr/$f\$" "$work/contents" || fail "not in the package: /usr/$f"
    done
    grep -q "/velk-invoice/libvelk-webengine.so\$" "$work/contents" || fail "the web engine plugin is not in the package"
    depends=$(dpkg-deb --field "$deb" Depends)
    for d in libqt6widgets6 libqt6printsupport6 libsqlite3-0 qt6-qpa-plugins libqt6svg6; do
        [[ "$depends" == *"$d"* ]] || fail "the package does not depend on $d: $depends"
    done
    ;;
*)
    fail "usage: $0 install|package BUILD-DIR WORK-DIR"
    ;;
esac
