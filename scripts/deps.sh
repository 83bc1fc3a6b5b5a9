# Sourced by the top-level scripts: installs the Debian packages that a fresh
# machine lacks. Each caller passes the packages it needs.
tav_install() {
  local missing=()
  for p in "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

TAV_BUILD_PACKAGES=(build-essential cmake pkg-config qtbase5-dev libqt5opengl5-dev libgl-dev
  libgtest-dev libgmock-dev libbenchmark-dev libeigen3-dev
  clang libclang-rt-14-dev)
TAV_RUN_PACKAGES=(xvfb xauth libgl1-mesa-dri libqt5opengl5 fonts-dejavu-core)
# Only for bench.sh: the peer widgets measured beside the graph, and the plot.
TAV_BENCH_PACKAGES=(libbenchmark-dev libqcustomplot-dev libqwt-qt5-dev python3 python3-matplotlib)

# Runs a command with a display: the current one if there is one, else a private Xvfb
# (-noreset: the server must not reset between the many short test processes, or a
# process that connects during the reset fails).
tav_with_display() {
  if [ -n "${DISPLAY:-}" ] && [ "${CI:-}" != "true" ]; then
    "$@"
  else
    xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp -noreset" "$@"
  fi
}

# Configures and builds one tree: tav_build DIR [cmake options...]
tav_build() {
  local dir=$1; shift
  cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
  cmake --build "$dir" -j"$(nproc)"
}
