#!/usr/bin/env bash
# Installs a configured and built Zelq tree into a fresh temporary prefix and checks the result as
# an application would see it:
#   - the expected files are there, and nothing the build alone needs (archives, tests);
#   - no installed text file or library search path points back into the source or build tree;
#   - the installed programs run and solve a shipped model, also after the prefix is moved;
#   - tests/consumer configures with find_package(Zelq CONFIG) and its two programs solve;
#   - the pkg-config files build the same programs by hand.
# Usage: scripts/check-install.sh BUILD_DIR      (exit status 0 when every check passes)
set -euo pipefail

src="$(cd "$(dirname "$0")/.." && pwd)"
if [ $# -ne 1 ] || [ ! -f "$1/CMakeCache.txt" ]; then
  echo "usage: $0 BUILD_DIR   (a configured and built Zelq build directory)" >&2
  exit 2
fi
build="$(cd "$1" && pwd)"

work="$(mktemp -d "${TMPDIR:-/tmp}/zelq-install.XXXXXX")"
trap 'rm -rf "$work"' EXIT
log="$work/log"

fail() { echo "check-install: $*" >&2; exit 1; }
# Runs a command quietly; on failure shows its output and stops.
run() {
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    fail "failed: $*"
  fi
}
# A value from the build's cache (empty when unset).
cached() { sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt" | head -n 1; }

generator="$(cached CMAKE_GENERATOR)"
cc="$(cached CMAKE_C_COMPILER)"
cxx="$(cached CMAKE_CXX_COMPILER)"
build_type="$(cached CMAKE_BUILD_TYPE)"
libdir_rel="$(cached CMAKE_INSTALL_LIBDIR)"
cflags="$(cached CMAKE_C_FLAGS)"
cxxflags="$(cached CMAKE_CXX_FLAGS)"
ldflags="$(cached CMAKE_EXE_LINKER_FLAGS)"
sanitize="$(cached ZELQ_SANITIZE)"
if [ -n "$sanitize" ]; then
  # The libraries carry the sanitizer runtime, so their users must be built with it too.
  san="-fsanitize=${sanitize//;/,} -fno-omit-frame-pointer"
  cflags="$cflags $san"; cxxflags="$cxxflags $san"; ldflags="$ldflags -fsanitize=${sanitize//;/,}"
fi
version="$(sed -n 's/^CMAKE_PROJECT_VERSION:[A-Z]*=//p' "$build/CMakeCache.txt" | head -n 1)"
[ -n "$version" ] || fail "no project version in $build/CMakeCache.txt"
major="${version%%.*}"

# ---- install ------------------------------------------------------------------------------------
prefix="$work/prefix"
run cmake --install "$build" --prefix "$prefix"
lib="$prefix/$libdir_rel"

for f in "$lib/libzelq.so" "$lib/libzelq.so.$major" "$lib/libzelq.so.$version" \
         "$lib/libzelqcpp.so" "$lib/libzelqcpp.so.$major" "$lib/libzelqcpp.so.$version" \
         "$lib/cmake/Zelq/ZelqConfig.cmake" "$lib/cmake/Zelq/ZelqConfigVersion.cmake" \
         "$lib/cmake/Zelq/ZelqTargets.cmake" "$lib/pkgconfig/zelq.pc" "$lib/pkgconfig/zelqcpp.pc" \
         "$prefix/bin/zelq-solve"; do
  [ -e "$f" ] || fail "not installed: ${f#"$prefix"/}"
done
for lib_name in libzelq libzelqcpp; do
  soname="$(readelf -d "$lib/$lib_name.so" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')"
  [ "$soname" = "$lib_name.so.$major" ] || fail "$lib_name.so has SONAME '$soname'"
done
# The command-line solver is installed whenever the build made it.
cli=""
if [ -n "$(find "$build" -maxdepth 3 -type f -name zelq -perm -u+x)" ]; then
  cli="$prefix/bin/zelq"
  [ -x "$cli" ] || fail "not installed: bin/zelq"
fi

# Every public header and nothing else under include/; no archives; only the two programs.
(cd "$src/include" && find zelq -maxdepth 1 \( -name '*.h' -o -name '*.inc' \) | sort) \
  >"$work/want-headers"
(cd "$prefix/include" && find . -type f | sed 's|^\./||' | sort) >"$work/got-headers"
diff -u "$work/want-headers" "$work/got-headers" >"$log" || { cat "$log" >&2; fail "headers differ"; }
stray="$(find "$prefix" -name '*.a' -o -path "$prefix/bin/*" ! -name zelq-solve ! -name zelq \
         -o -iname '*gtest*' -o -iname '*gmock*' -o -iname '*benchmark*')"
[ -z "$stray" ] || fail "build-only files installed: $stray"

# ---- no way back into the source or build tree --------------------------------------------------
refs="$(grep -rIl -e "$src" -e "$build" "$prefix" || true)"
[ -z "$refs" ] || fail "installed files name the source or build tree: $refs"
while IFS= read -r elf; do
  paths="$(readelf -d "$elf" | sed -n 's/.*(\(RUNPATH\|RPATH\)).*\[\(.*\)\]/\2/p')"
  case "$paths" in *"$src"*|*"$build"*) fail "${elf#"$prefix"/} searches $paths" ;; esac
done < <(find "$prefix" -type f \( -name '*.so*' -o -path '*/bin/*' \))

# ---- the installed program, in place and moved --------------------------------------------------
model="$src/examples/data/p0033.mps"
run env -u LD_LIBRARY_PATH "$prefix/bin/zelq-solve" "$model" Logging=0
grep -q '^Objective: 3089$' "$log" || { cat "$log" >&2; fail "zelq-solve: wrong result"; }
if [ -n "$cli" ]; then
  run env -u LD_LIBRARY_PATH "$cli" --version
  grep -q "$version" "$log" || { cat "$log" >&2; fail "zelq --version does not name $version"; }
fi
moved="$work/moved"
mv "$prefix" "$moved"
run env -u LD_LIBRARY_PATH "$moved/bin/zelq-solve" "$model" Logging=0
if [ -n "$cli" ]; then run env -u LD_LIBRARY_PATH "$moved/bin/zelq" --version; fi
mv "$moved" "$prefix"

# ---- a CMake application ------------------------------------------------------------------------
consumer="$work/consumer"
run cmake -S "$src/tests/consumer" -B "$consumer" -G "$generator" \
  -DCMAKE_BUILD_TYPE="$build_type" -DCMAKE_C_COMPILER="$cc" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_C_FLAGS="$cflags" -DCMAKE_CXX_FLAGS="$cxxflags" -DCMAKE_EXE_LINKER_FLAGS="$ldflags" \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
found="$(sed -n 's/^Zelq_DIR:[A-Z]*=//p' "$consumer/CMakeCache.txt")"
[ "$found" = "$lib/cmake/Zelq" ] || fail "find_package found Zelq in '$found'"
run cmake --build "$consumer"
for app in engine_app model_app; do
  run env -u LD_LIBRARY_PATH "$consumer/$app"
done

# ---- pkg-config ---------------------------------------------------------------------------------
if command -v pkg-config >/dev/null; then
  export PKG_CONFIG_PATH="$lib/pkgconfig"
  got="$(pkg-config --modversion zelqcpp)"
  [ "$got" = "$version" ] || fail "pkg-config reports version '$got'"
  run "$cc" $cflags "$src/tests/consumer/engine_app.c" -o "$work/engine_pc" \
    $(pkg-config --cflags --libs zelq) $ldflags -Wl,-rpath,"$lib"
  run env -u LD_LIBRARY_PATH "$work/engine_pc"
  run "$cxx" -std=c++20 $cxxflags "$src/tests/consumer/model_app.cc" -o "$work/model_pc" \
    $(pkg-config --cflags --libs zelqcpp) $ldflags -Wl,-rpath,"$lib"
  run env -u LD_LIBRARY_PATH "$work/model_pc"
else
  echo "check-install: pkg-config not found; its files were installed but not tried"
fi
echo "check-install: install tree of $build passed"
