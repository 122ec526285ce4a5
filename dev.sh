#!/usr/bin/env bash
# Set-up, build, and then run the program or every test.
#   ./dev.sh run    install what is missing, build, start Velk Invoice
#   ./dev.sh test   install what is missing, build, run every test (also under sanitizers)
set -euo pipefail
cd "$(dirname "$0")"

packages=(g++ cmake make pkg-config qt6-base-dev libsqlite3-dev poppler-utils
          libgl-dev qt6-qpa-plugins fonts-dejavu-core clang-format
          libqt6svg6 desktop-file-utils appstream dpkg-dev sqlite3 qt6-webengine-dev
          libsaxonhe-java default-jre-headless libxml2-utils)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

jobs=$(nproc)
build() {  # folder, target ("all" for everything), extra cmake arguments
  cmake -S . -B "$1" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${@:3}" >/dev/null
  cmake --build "$1" -j "$jobs" --target "$2"
}

case "${1:-}" in
  run)
    build build velk-invoice
    exec build/velk-invoice
    ;;
  test)
    # The tree stays in the house format: an unformatted file fails the test command.
    find . -path './build*' -prune -o \( -name '*.cpp' -o -name '*.h' \) -print | xargs clang-format --dry-run --Werror
    build build all
    (cd build && ctest --output-on-failure)
    build build-sanitize all -DVELK_SANITIZE=ON
    (cd build-sanitize && ASAN_OPTIONS=detect_leaks=0 ctest --output-on-failure)
    ;;
  *)
    echo "usage: $0 run|test" >&2
    exit 2
    ;;
esac
