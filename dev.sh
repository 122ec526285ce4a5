#!/usr/bin/env bash
# Set-up, build, and then run the program or every test.
#   ./dev.sh run        install what is missing, build, start Velk Invoice
#   ./dev.sh test       install what is missing, build, run every test (also under sanitizers)
#   ./dev.sh packages   print the Debian packages this script installs
set -euo pipefail
cd "$(dirname "$0")"

# Every package the build, the Debian package and the tests need, by Debian name.
# dev/tools.list names the programs among them; dev/check-tools.sh keeps the two agreeing.
packages=(g++ cmake make pkg-config ccache qt6-base-dev libsqlite3-dev poppler-utils
          libgl-dev qt6-qpa-plugins fonts-dejavu-core clang-format
          libqt6svg6 desktop-file-utils appstream dpkg dpkg-dev file sqlite3 qt6-webengine-dev
          libsaxonhe-java default-jre-headless libxml2-utils libqpdf-dev qpdf libqrencode-dev zbar-tools)

if [ "${1:-}" = packages ]; then
  echo "${packages[@]}"
  exit 0
fi

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
    dev/check-tools.sh
    # The tree stays in the house format: an unformatted file fails the test command.
    find . -path './build*' -prune -o \( -name '*.cpp' -o -name '*.h' \) -print | xargs clang-format --dry-run --Werror
    build build all -DVELK_WERROR=ON
    (cd build && ctest --output-on-failure)
    # Under the sanitizers only the test programs are built: the program, the benchmark
    # and the package are the first build's.
    build build-sanitize velk-tests -DVELK_SANITIZE=ON -DVELK_WERROR=ON
    (cd build-sanitize && ASAN_OPTIONS=detect_leaks=0 ctest --output-on-failure -LE dist)
    ;;
  *)
    echo "usage: $0 run|test|packages" >&2
    exit 2
    ;;
esac
