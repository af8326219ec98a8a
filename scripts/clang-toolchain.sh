# Sourced by scripts/fuzz and scripts/sanitize: installs Clang with its sanitizer and
# libFuzzer runtimes when they are missing, then sets clang_cc and clang_cxx.
#   install_clang_toolchain [more Debian packages or Homebrew formulae...]

clang_version=${QUILLON_CLANG_VERSION:-14}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

debian_missing() {
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || echo "$package"
    done
}

install_clang_toolchain() {
    case "$(uname -s)" in
        Darwin)
            # Apple's Clang has no libFuzzer: Homebrew's llvm has it all.
            command -v brew >/dev/null || { echo "Homebrew est nécessaire : https://brew.sh" >&2; exit 1; }
            local formula
            for formula in llvm "$@"; do
                brew list --formula "$formula" >/dev/null 2>&1 || brew install "$formula"
            done
            clang_cc="$(brew --prefix llvm)/bin/clang"
            clang_cxx="$(brew --prefix llvm)/bin/clang++"
            ;;
        *)
            # Debian 12 ships the runtimes in libclang-rt-N-dev, Ubuntu 22.04 in libclang-common-N-dev.
            local runtime=libclang-rt-$clang_version-dev
            apt-cache show "$runtime" >/dev/null 2>&1 || runtime=libclang-common-$clang_version-dev
            local missing
            missing=$(debian_missing "clang-$clang_version" "$runtime" "$@")
            if [ -n "$missing" ]; then
                echo "Installation de : $(echo $missing)"
                as_root apt-get update -qq
                # shellcheck disable=SC2086
                DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
            fi
            clang_cc=clang-$clang_version
            clang_cxx=clang++-$clang_version
            ;;
    esac
}
