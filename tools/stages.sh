# Stages of a longer job, each announced and timed. To be sourced by bash.

# clock SECONDS: as "1 min 05 s".
clock() {
  if (($1 < 60)); then echo "$1 s"; else printf '%d min %02d s\n' $(($1 / 60)) $(($1 % 60)); fi
}

# stage NAME COMMAND...: runs the command; says what it is before and how long it took after. Ends the script with the
# command's status when it fails.
stage() {
  local name=$1 begin=$SECONDS status=0
  shift
  printf '\n== %s (%s so far)\n' "$name" "$(clock $SECONDS)"
  "$@" || status=$?
  if ((status != 0)); then
    printf '\nFAILED: %s, status %d, after %s\n' "$name" "$status" "$(clock $((SECONDS - begin)))"
    exit "$status"
  fi
  printf '== %s: done in %s\n' "$name" "$(clock $((SECONDS - begin)))"
}

# configure PRESET: quick and quiet when nothing has changed.
configure() {
  cmake --preset "$1" >"$configure_log" 2>&1 || { cat "$configure_log"; return 1; }
}
configure_log=$(mktemp)
trap 'rm -f "$configure_log"' EXIT
