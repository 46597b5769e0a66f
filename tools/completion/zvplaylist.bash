# Completion of zvplaylist for bash.
_zvplaylist() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands="generate attributes"
  local generate="--scan --import --map --seed --random --format --output --quiet --help"
  local fields="ident= location= title= artist= album= date= genre= subgenre= tempo="
  COMPREPLY=()
  case $previous in
    --scan) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    --import | -o | --output)
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
    --format) mapfile -t COMPREPLY < <(compgen -W "text m3u8 xspf json" -- "$current"); return ;;
    --map) compopt -o nospace; mapfile -t COMPREPLY < <(compgen -W "$fields" -- "$current"); return ;;
    --seed | --random) return ;;
  esac
  case "$COMP_CWORD ${COMP_WORDS[1]}" in
    "1 "*) mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current") ;;
    *" generate") mapfile -t COMPREPLY < <(compgen -W "$generate" -- "$current") ;;
    *" attributes") mapfile -t COMPREPLY < <(compgen -W "--help" -- "$current") ;;
  esac
}
complete -F _zvplaylist zvplaylist
