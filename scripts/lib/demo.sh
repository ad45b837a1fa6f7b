# shellcheck shell=bash
# SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#
# What scripts/demo is made of: its processes, and what it shows and expects. To be
# sourced by bash.

# Calls launch_NAME, which starts a daemon, and waits until it serves. Tries again
# if it does not: another program may have taken the free port.
start_daemon() {
  for _ in {1..5}; do
    "launch_$1"
    if has_logged "$1" '^NET-SNMP version'; then return; fi
  done
  fail "the $1 does not start"
}

# Waits until NAME has logged what matches.
has_logged() { wait_until grep -qs "$2" "$scratch/$1.log"; }

# The processes by their names.
declare -A pids

# Runs a command in the background, with its output in the scratch directory, and in
# a session of its own, so that Ctrl-C does not end it before we do.
start() {
  local name=$1
  shift
  printf '$ %s &\n' "$*"
  setsid "$@" >"$scratch/$name.log" 2>&1 </dev/null &
  started_pid=$!
  pids[$name]=$!
}

# Repeats the command for up to 5 seconds, until it succeeds or the process started
# last has ended.
wait_until() {
  for _ in {1..100}; do
    if "$@"; then return; fi
    if ! kill -0 "$started_pid" 2>/dev/null; then return 1; fi
    sleep 0.05
  done
  return 1
}

# Ends them, the services before the master agent.
clean_up() {
  local name pid
  for name in irrigation thermal master receiver; do
    pid=${pids[$name]:-}
    [[ $pid ]] || continue
    kill "$pid" 2>/dev/null || true
    wait "$pid" || true
  done
  rm -rf "$scratch"
}

# Waits until exactly so many matching notifications have been received, and shows
# them.
expect_received() {
  wait_until has_received "$@" || fail "the notifications have not arrived"
  (($(count_received "$2") == $1)) || fail "there are more than $1"
  echo "The receiver says:"
  grep -E "$2" "$scratch/receiver.log" | tr '\t' '\n'
}

has_received() { (($(count_received "$2") >= $1)); }

count_received() { grep -Ec "$1" "$scratch/receiver.log" || true; }

# Waits until the service of this name has logged a line that matches, and shows it.
service_says() {
  has_logged "$1" "$2" || fail "the service does not say: $2"
  echo "The service says: $(grep "$2" "$scratch/$1.log")"
}

# Sets an object and reads it. Arguments: object, type, value, value expected.
set_and_get() {
  expect "$4" snmpset "$1" "$2" "$3"
  expect "$4" snmpget "$1"
}

# Runs a tool, which must succeed and print a match of the first argument.
expect() {
  ask "${@:2}"
  ((status == 0)) || fail "the manager got an error"
  [[ $output =~ $1 ]] || fail "expected: $1"
}

# The same for a tool that must fail.
expect_error() {
  ask "${@:2}"
  ((status != 0)) || fail "the manager got no error"
  [[ $output =~ $1 ]] || fail "expected: $1"
}

# Runs a tool and shows the command and its output; "..." stands for the options
# that are always the same.
ask() {
  local tool=("$1") word typed
  shift
  while [[ $1 == -* ]]; do
    tool+=("$1")
    shift
  done
  typed="$ ${tool[*]} ..."
  for word in "$@"; do
    if [[ $word == *\ * ]]; then word="'$word'"; fi
    typed+=" $word"
  done
  echo "$typed"
  status=0
  output=$("${tool[@]}" "${manager[@]}" "$snmp_address" "$@" 2>&1) || status=$?
  printf '%s\n' "$output"
}

title() { printf '\n== %s\n' "$1"; }

fail() {
  local service
  echo "error: $1" >&2
  for service in irrigation thermal; do
    [[ -s $scratch/$service.log ]] || continue
    echo "What $service has logged:" >&2
    tail -20 "$scratch/$service.log" >&2
  done
  exit 1
}
