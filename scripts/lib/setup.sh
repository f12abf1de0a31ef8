# Sourced by scripts/demo and scripts/test: installs what is missing on a Debian machine, and builds a preset.
# Both must work on a machine that has nothing but a shell, so there is only bash and dpkg in here.

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

say() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; }
fail() {
  say "$*"
  exit 1
}

# packages_of LIST...: the names in cmake/packages/LIST.txt.
packages_of() {
  local list
  for list in "$@"; do
    sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$project/cmake/packages/$list.txt"
  done
}

# missing_packages LIST...: those of them that dpkg does not hold installed.
missing_packages() {
  local name
  for name in $(packages_of "$@"); do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || echo "$name"
  done
}

# install_missing LIST...: asks the network for nothing when all is there.
install_missing() {
  local become=() missing
  command -v dpkg-query >/dev/null ||
    fail "this script installs Debian packages, and this is no Debian system. Install the counterparts of these, then build as README.md says: $(packages_of "$@" | xargs)"
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      fail "these packages are missing and there is no sudo to install them with. As root, run: apt-get install ${missing[*]}"
    become=(sudo)
  fi
  "${become[@]}" apt-get update -q >&2 ||
    say "the package lists could not be refreshed; trying with the lists that are here"
  "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}" >&2 </dev/null ||
    fail "could not install: ${missing[*]}. The lines above say why; install them by hand, then run this again."
}

# build PRESET [TARGET...]: configures and builds; the programs are then in build/PRESET/bin.
build() {
  local preset=$1 targets=()
  shift
  [ $# -eq 0 ] || targets=(--target "$@")
  (cd "$project" && cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}") >&2
}
