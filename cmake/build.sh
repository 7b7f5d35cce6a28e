# Sourced by the scripts of the root folder.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# build PRESET [TARGET...]: installs what is missing, configures once, builds. Speaks only of a failure.
build() {
  local preset=$1 folder=$root/build/$1 log
  "$root/cmake/install_packages.sh"
  echo "Building ($preset) ..." >&2
  log=$(mktemp)
  if ! (
    cd "$root"
    [[ -f $folder/build.ninja ]] || cmake --preset "$preset"
    shift
    cmake --build --preset "$preset" ${1:+--target "$@"}
  ) >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
}
