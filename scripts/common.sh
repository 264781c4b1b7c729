# shellcheck shell=bash
# shellcheck disable=SC2154
# Shared by run, test and .ci/run, which set $root and source it. Speaks on standard error only:
# standard output belongs to the program that is run.

say() { printf 'qenzor: %s\n' "$*" >&2; }
die() { say "$*"; exit 1; }

# install_packages LIST...: installs what the lists name and no package of this machine is or
# provides. Asks apt nothing when everything is there, and leaves machines without dpkg alone.
install_packages() {
  local wanted missing
  command -v dpkg-query >/dev/null || return 0
  mapfile -t wanted < <(cat "$@" | sed '/^#/d' | sort -u)
  mapfile -t missing < <(
    comm -23 <(printf '%s\n' "${wanted[@]}") \
      <(dpkg-query -W -f='${db:Status-Status} ${Package} ${Provides}\n' 2>/dev/null |
        sed -n 's/^installed //p' | tr -s ', ' '\n' | sort -u))
  [ "${#missing[@]}" -gt 0 ] || return 0

  [ "$(id -u)" -eq 0 ] || die "missing packages; run as root: apt-get install ${missing[*]}"
  say "installing ${missing[*]}"
  local log
  log=$(mktemp -t qenzor-apt.XXXXXX)
  export DEBIAN_FRONTEND=noninteractive
  if ! { apt-get -q update &&
         apt-get -q install -y --no-install-recommends -o DPkg::Lock::Timeout=300 "${missing[@]}"; \
       } </dev/null >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    die "apt-get failed; its output is in $log"
  fi
  rm -f "$log"
}

# components: the names of the optional components.
components() { sed -n 's/^\([a-z][a-z0-9]*\).*/\1/p' "$root/scripts/components.txt"; }

# configure PRESET [-DNAME=VALUE...]: makes the preset's build folder, or changes it where an option
# has another value; ninja sees to all other changes itself. ccache is used where it is installed.
configure() {
  local preset=$1 dir=$root/build/$1 option name is_so=yes
  shift
  [ -f "$dir/build.ninja" ] || is_so=
  for option in "$@"; do
    name=${option#-D} name=${name%%=*}
    grep -qs "^$name:[A-Z]*=${option#*=}\$" "$dir/CMakeCache.txt" || is_so=
  done
  [ -z "$is_so" ] || return 0
  say "configuring $preset"
  mkdir -p "$dir"
  ! command -v ccache >/dev/null || export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  cmake -S "$root" --preset "$preset" "$@" >"$dir/configure.log" 2>&1 ||
    { cat "$dir/configure.log" >&2; die "cmake failed"; }
}

# build PRESET [TARGET...]: configures at the first time, then builds. Silent when nothing is to do,
# one line when something is, the end of the log when it fails.
build() {
  local preset=$1 dir=$root/build/$1 log=$root/build/$1/build.log
  shift
  configure "$preset"
  # Two runs at once take turns: ninja does not guard its folder.
  if ! (
    flock 9
    ninja -C "$dir" "$@" 2>&1 9>&- | tee "$log" | {
      while IFS= read -r line; do
        [[ $line =~ ^\[[0-9]+/([0-9]+)\]\ (Building|Linking) ]] || continue
        say "building $preset (${BASH_REMATCH[1]} steps)"
        break
      done
      cat >/dev/null
    }
    exit "${PIPESTATUS[0]}"
  ) 9>"$dir/.lock"; then
    tail -n 60 "$log" >&2
    die "the build of $preset failed; its output is in $log"
  fi
}
