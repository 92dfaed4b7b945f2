#!/usr/bin/env bash
# The library as a package. A shared Release build of the library alone (its one
# dependency is tinyxml2) is installed into a temporary prefix; then:
#   - only the interface leaves the shared library and the static archive of the
#     same objects (tests/package/check_symbols.sh), and the check itself catches
#     a global helper;
#   - the consumer example (examples/embed) is built with find_package(fplc) and
#     with pkg-config, and both compile the example installation to the same bytes;
#   - the static archive links into a shared object (position-independent code);
#   - a plug-in that links the shared library is loaded with dlopen and compiles
#     the example (tests/package).
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="cmake make g++ pkg-config binutils libtinyxml2-dev libgtest-dev"
# The Makefile installs them (apt-get as root) or prints the line to run.
make -s deps PACKAGES="$packages"

ulimit -v 4194304  # 4 GiB per process: the compiler needs far less
step_timeout=900   # seconds for each build or run

build=build-ci-package
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"

echo "-- library alone, shared, installed into $prefix"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON \
  -DFPLC_FRONTENDS=OFF -DFPLC_TESTS=OFF -DFPLC_WERROR=OFF -DFPLC_SANITIZE=OFF >/dev/null
timeout "$step_timeout" cmake --build "$build" -j 2
cmake --install "$build" --prefix "$prefix" >/dev/null
test -f "$prefix/include/fplc/fplc.h"
for internal in interpreter resolve frontend cli tokenizer/cp1252.h tokenizer/std_conversions.h; do
  if [ -e "$prefix/include/fplc/$internal" ]; then
    echo "internal header installed: include/fplc/$internal" >&2
    exit 1
  fi
done

echo "-- exported names"
tests/package/check_symbols.sh "$build"/libfpl.so "$build"/libfpl_internal.a
printf '#include <string>\nint toInt(std::string const& s) { return int(s.size()); }\n' >"$work/clash.cpp"
g++ -c -o "$work/clash.o" "$work/clash.cpp"
ar rcs "$work/libclash.a" "$work/clash.o"
if tests/package/check_symbols.sh "$work/libclash.a" >/dev/null 2>&1; then
  echo "the symbol check let a global helper pass" >&2
  exit 1
fi

cp -r examples/installation "$work/inst"
rm -f "$work"/inst/stellwerke/*_fahrplan.xml
expected="$work/inst/stellwerke/ahlbach_fahrplan.xml
$work/inst/stellwerke/bergheide_fahrplan.xml"
run_example() {  # $1: the consumer program; leaves the timetables in $work/$2
  local out
  out=$(timeout "$step_timeout" "$1" "$work/inst/fahrplaene/beispiel.fpl")
  if [ "$out" != "$expected" ]; then
    printf 'unexpected output of %s:\n%s\n' "$1" "$out" >&2
    exit 1
  fi
  mkdir -p "$work/$2"
  mv "$work"/inst/stellwerke/*_fahrplan.xml "$work/$2/"
}

echo "-- consumer built with find_package(fplc)"
cmake -S examples/embed -B "$work/embed-cmake" -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" >/dev/null
timeout "$step_timeout" cmake --build "$work/embed-cmake"
run_example "$work/embed-cmake/embed" out-cmake

echo "-- consumer built with pkg-config"
export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name fplc.pc)")
timeout "$step_timeout" g++ -std=c++17 -Wall -Wextra -Werror -o "$work/embed-pc" \
  examples/embed/embed.cpp $(pkg-config --cflags --libs fplc) \
  -Wl,-rpath,"$(pkg-config --variable=libdir fplc)"
run_example "$work/embed-pc" out-pc
cmp "$work/out-cmake/ahlbach_fahrplan.xml" "$work/out-pc/ahlbach_fahrplan.xml"
cmp "$work/out-cmake/bergheide_fahrplan.xml" "$work/out-pc/bergheide_fahrplan.xml"

echo "-- static archive linked into a shared object"
timeout "$step_timeout" g++ -std=c++20 -shared -fPIC -Wl,--no-undefined \
  -o "$work/plugin-static.so" tests/package/plugin.cpp -I"$prefix/include" \
  "$build"/libfpl_internal.a -ltinyxml2

echo "-- plug-in with the shared library, loaded with dlopen"
cmake -S tests/package -B "$work/plugin" -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
timeout "$step_timeout" cmake --build "$work/plugin" -j 2
timeout "$step_timeout" "$work/plugin/plugin_test"

echo "-- package step passed"
