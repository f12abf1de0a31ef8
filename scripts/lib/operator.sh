# Sourced: the account under which the launcher is started when the caller is root, since the launcher refuses root.

operator=tarnwick-demo
operator_home=/var/lib/tarnwick-demo

# ensure_operator: makes the account when root has none yet. Several tests may ask at once.
ensure_operator() {
  if [ "$(id -u)" -ne 0 ] || id "$operator" >/dev/null 2>&1; then return 0; fi
  useradd --system --user-group --create-home --home-dir "$operator_home" --shell /usr/sbin/nologin "$operator" 2>/dev/null ||
    id "$operator" >/dev/null 2>&1 ||
    { echo "cannot create the account $operator that the launcher is to run under" >&2; return 1; }
}

# as_operator COMMAND...: runs it as that account with a clean environment when root, as it is otherwise.
# What the command needs from the environment stands in operator_environment, as NAME=VALUE.
operator_environment=()
as_operator() {
  if [ "$(id -u)" -ne 0 ]; then
    env "${operator_environment[@]}" "$@"
    return
  fi
  (cd / && exec setpriv --reuid "$operator" --regid "$operator" --init-groups --inh-caps=-all --no-new-privs --reset-env \
    env PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 "${operator_environment[@]}" "$@")
}

# stage_for_operator BIN: root may build where the account cannot enter. Sets `stage`, a folder whose bin/, scripts/lib/
# and tests/station/ the account can read, and `staged_bin`; a copy is removed by unstage.
stage_for_operator() {
  local bin=$1 root
  root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
  stage=$root
  staged_bin=$bin
  as_operator test -x "$bin/tarnwick-gui" -a -r "$root/scripts/lib/operator.sh" && return 0
  stage=$(mktemp -d /tmp/tarnwick-stage.XXXXXX) && staged_bin=$stage/bin
  mkdir -p "$stage/scripts" "$stage/tests" "$stage/bin"
  cp -r "$root/scripts/lib" "$root"/scripts/demo.* "$stage/scripts/" && cp -r "$root/tests/station" "$stage/tests/"
  mkdir -p "$stage/sim" && cp -r "$root/sim/decoders" "$stage/sim/"
  find "$bin" -maxdepth 1 \( -name "tarnwick*" -o -name "*.conf" \) -type f -exec cp {} "$stage/bin/" \;
  chmod -R a+rX,go-w "$stage"
}

unstage() {
  case ${stage-} in /tmp/tarnwick-stage.*) rm -rf "$stage" ;; esac
}
