#!/bin/sh
# Builds a project of somebody else against Quillon as it comes to users, and runs its programs.
#
#   try_package.sh HOW BUILD SOURCE C_COMPILER CXX_COMPILER
#
# HOW: found, by CMake in a copy of the installation that has been moved; pkg-config, in the same; subdirectory; fetched.
# BUILD: the build folder that is installed, and whose applet the fetched client opens, as that brings none. SOURCE: the source
# tree.
set -eu
how=$1 build=$2 source=$3 cc=$4 cxx=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$source/tests/package/project" "$work/project"

install_moved() {
    cmake --install "$build" --prefix "$work/staged" >"$work/install.log"
    mv "$work/staged" "$work/moved"
}

with_cmake() {
    targets=$1
    shift
    cmake -S "$work/project" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_C_COMPILER="$cc" \
        -DCMAKE_CXX_COMPILER="$cxx" -DHOW="$how" "$@"
    # shellcheck disable=SC2086
    cmake --build "$work/build" --target $targets
}

case $how in
    found)
        install_moved
        with_cmake "grab_one read_width" -DCMAKE_PREFIX_PATH="$work/moved"
        ;;
    pkg-config)
        install_moved
        PKG_CONFIG_PATH=$(dirname "$(find "$work/moved" -name quillon.pc)")
        export PKG_CONFIG_PATH
        home=$(pkg-config --variable=home quillon)
        mkdir "$work/build"
        # shellcheck disable=SC2046
        "$cxx" -std=c++20 "$work/project/grab_one.cpp" -o "$work/build/grab_one" $(pkg-config --cflags --libs quillon)
        "$cc" -std=c11 "$work/project/read_width.c" -o "$work/build/read_width" $(pkg-config --cflags quillon) \
            -I"$(pkg-config --variable=includedir quillon)/quillon" -L"$home/lib" -lQuillon -L"$home/lib/softboard" \
            -Wl,--no-as-needed -lsoftboard -lfglib5 -ltavrt -lorlo_hw
        export LD_LIBRARY_PATH="$(pkg-config --variable=libdir quillon):$home/lib:$home/lib/softboard"
        ;;
    subdirectory) with_cmake "grab_one read_width" -DQUILLON_SOURCE="$source" ;;
    fetched)
        tar -C "$source" --exclude=./build* --exclude=./.git -czf "$work/quillon.tar.gz" .
        with_cmake grab_one -DQUILLON_SOURCE="$work/quillon.tar.gz"
        export QUILLON_HOME="$build"
        ;;
    *) echo "try_package.sh: $how is no way" >&2; exit 2 ;;
esac

expect() {
    told=$("$work/build/$1")
    [ "$told" = "$2" ] || { printf '%s told:\n%s\ninstead of:\n%s\n' "$1" "$told" "$2" >&2; exit 1; }
}
expect grab_one "64 x 16
-7080"
[ "$how" = fetched ] || expect read_width "FG_WIDTH = 1024"
