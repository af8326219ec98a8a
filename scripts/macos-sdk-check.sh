#!/usr/bin/env bash
# Type-checks the macOS code of a Quillon checkout against Apple's macOS 14.2 SDK headers, on Linux.
# Nothing is linked or run: it catches wrong API names, signatures, types and missing includes,
# and any API newer than the minimum system (macOS 12: -Werror=unguarded-availability).
# Usage: macos-sdk-check.sh SDK_GIT_DIR [REPO_DIR]
#   SDK_GIT_DIR: the git directory that `fetch github:hexops/xcode-frameworks` returns (an unmodified
#   copy of the SDK's headers). It is unpacked once into ~/.cache/quillon-macsdk.
#   Checks every .cpp/.mm under src/platform/macos for arm64 macOS 14 and x86_64 macOS 12, plus the
#   files that hold a Q_OS_MACOS branch. Exit 1 when any file has an error.
set -u
git_dir=${1:?usage: macos-sdk-check.sh SDK_GIT_DIR [REPO_DIR]}; repo=$(cd "${2:-.}" && pwd)
sdk=${XDG_CACHE_HOME:-$HOME/.cache}/quillon-macsdk/MacOSX14.2.sdk
if [ ! -f "$sdk/.ready" ]; then
  rm -rf "$sdk"; mkdir -p "$sdk/usr" "$sdk/System/Library"
  git --git-dir="$git_dir" archive HEAD Frameworks include lib | tar -x -C "$sdk" || { echo "cannot unpack the SDK from $git_dir"; exit 2; }
  mv "$sdk/include" "$sdk/usr/include"; mv "$sdk/Frameworks" "$sdk/System/Library/Frameworks"; mv "$sdk/lib" "$sdk/usr/lib"
  touch "$sdk/.ready"
fi
qt=$(dirname "$(find /usr/include -maxdepth 3 -type d -name QtCore -path '*qt6*' | head -1)")
[ -d "$qt" ] || { echo "Qt 6 development headers not found (install qt6-base-dev)"; exit 2; }
command -v clang++ >/dev/null || { echo "clang++ not found (install clang)"; exit 2; }
flags=(-fsyntax-only -isysroot "$sdk" -stdlib=libc++ -iframework "$sdk/System/Library/Frameworks"
  -isystem "$qt" -isystem "$qt/QtCore" -isystem "$qt/QtGui" -isystem "$qt/QtQml" -isystem "$qt/QtQuick" -isystem "$qt/QtQuickControls2" -isystem "$qt/QtWidgets" -isystem "$qt/QtSvg"
  -I "$repo/src" -DQT_CORE_LIB -DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS
  -Wall -Wextra -Wpedantic -Wno-missing-field-initializers -fno-color-diagnostics
  -Wunguarded-availability -Werror=unguarded-availability)
files=$(cd "$repo" && { ls src/platform/macos/*.cpp src/platform/macos/*.mm 2>/dev/null;
  grep -rl --include='*.cpp' --include='*.mm' 'Q_OS_MACOS\|__APPLE__' src | grep -v '^src/platform/macos/'; } | sort -u)
bad=0; n=0
for f in $files; do
  lang=c++; case "$f" in *.mm) lang=objective-c++;; esac
  for target in arm64-apple-macos14.0 x86_64-apple-macos12.0; do
    n=$((n+1))
    out=$(cd "$repo" && clang++ -x $lang -std=c++20 -target $target "${flags[@]}" "$f" 2>&1)
    if echo "$out" | grep -q 'error:'; then bad=$((bad+1)); echo "== $f ($target)"; echo "$out" | grep -A3 'error:' | head -12; fi
  done
done
echo "macOS SDK check: $((n-bad))/$n file-targets without error"
[ $bad -eq 0 ]
