#!/usr/bin/env bash
# Builds what the Windows build depends on, from Debian's packages, into the prefix given as its argument: googletest
# from its source package's installed files, pugixml from its source package, spdlog and fmt as headers. Done once.
set -euo pipefail
here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
prefix=$(realpath -m -- "$1")
work=$prefix/work
stamp=$prefix/complete
wanted=$(sha256sum "$here"/*.sh "$here"/*.cmake | sha256sum)
if [[ -f $stamp && $(<"$stamp") == "$wanted" ]]; then
  exit 0
fi
rm -rf -- "$prefix"
mkdir -p -- "$work" "$prefix/include"

build() { # source, cmake options...
  local source=$1
  shift
  cmake -S "$source" -B "$work/build-$(basename -- "$source")" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$here/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
  cmake --build "$work/build-$(basename -- "$source")" --target install
}

# Source packages come through apt with lists of its own; the machine's configured sources stay as they are.
fetch_source() { # package
  local apt=$work/apt options file
  mkdir -p -- "$apt/parts" "$apt/lists/partial" "$apt/cache/archives/partial"
  for file in /etc/apt/sources.list.d/debian.sources /etc/apt/sources.list; do
    [[ ! -f $file ]] || sed -e 's/^Types:.*/Types: deb-src/' -e 's/^deb /deb-src /' -e '/cdrom:/d' "$file" >"$apt/parts/$(basename -- "$file")"
  done
  [[ ! -f $apt/parts/sources.list ]] || mv -- "$apt/parts/sources.list" "$apt/parts/main.list"
  options=(-q -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$apt/parts"
    -o Dir::State::lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User=root)
  apt-get "${options[@]}" update
  (cd -- "$work" && apt-get "${options[@]}" source --download-only "$1" && dpkg-source -x "$1"_*.dsc "$work/$1")
}

build /usr/src/googletest -DBUILD_GMOCK=OFF
fetch_source pugixml
build "$work/pugixml"
cp -r -- /usr/include/spdlog /usr/include/fmt "$prefix/include/"
for package in spdlog fmt; do
  mkdir -p -- "$prefix/lib/cmake/$package"
  cp -- "$here/$package-config.cmake" "$prefix/lib/cmake/$package/"
done
printf '%s\n' "$wanted" >"$stamp"
