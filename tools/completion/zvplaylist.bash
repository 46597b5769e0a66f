# Completion of zvplaylist for bash.
_zvplaylist() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands="generate like grid info validate explain lists attributes"
  commands+=" scan import collections show rename remove export load check compact"
  local output="--format --output --language --help"
  local sources="--from --store --scan --import --map --quiet $output"
  local fill="--into --again --store --quiet --language --help"
  local lists="genres moods eras tempos origins artist-types"
  local fields="ident= location= title= artist= album= date= tempo= valence= energy= subgenre= genre= mood="
  fields+=" era= origin= artist_type="
  local name command=${COMP_WORDS[1]}
  COMPREPLY=()
  # Names of collections are completed where one stands: behind these options, and first behind these commands.
  case "$COMP_CWORD $command $previous" in
    *" --from" | *" --into" | "2 show "* | "2 rename "* | "2 remove "* | "2 export "*)
      while IFS= read -r name; do
        [[ $name == "$current"* ]] && COMPREPLY+=("$(printf %q "$name")")
      done < <("${COMP_WORDS[0]}" collections --names 2>/dev/null)
      return ;;
  esac
  case $previous in
    --scan | --store | --below) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    --import | -o | --output)
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
    --format) mapfile -t COMPREPLY < <(compgen -W "text m3u8 xspf json" -- "$current"); return ;;
    --language) mapfile -t COMPREPLY < <(compgen -W "eng ger fre" -- "$current"); return ;;
    --map) compopt -o nospace; mapfile -t COMPREPLY < <(compgen -W "$fields" -- "$current"); return ;;
    --exclude) compopt -o nospace; mapfile -t COMPREPLY < <(compgen -W "mood: genre: era: origin:" -- "$current"); return ;;
    --as | --seed | --random | --max | --per-artist | --per-album | --find | --depth | --mood | --genre | --era | --origin) return ;;
  esac
  case "$COMP_CWORD ${COMP_WORDS[1]}" in
    "1 "*) mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current") ;;
    *" generate") mapfile -t COMPREPLY < <(compgen -W "--seed --random $sources" -- "$current") ;;
    *" like")
      mapfile -t COMPREPLY < <(compgen -W "--max --per-artist --per-album --random $sources" -- "$current") ;;
    *" grid")
      mapfile -t COMPREPLY < <(compgen -W "--mood --genre --era --origin --exclude --estimate $sources" -- "$current") ;;
    *" validate") mapfile -t COMPREPLY < <(compgen -W "--language --help" -- "$current") ;;
    *" explain") mapfile -t COMPREPLY < <(compgen -W "$sources" -- "$current") ;;
    *" info") mapfile -t COMPREPLY < <(compgen -W "$sources" -- "$current") ;;
    *" scan")
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -W "$fill" -- "$current") ;;
    *" import")
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -W "$fill --map" -- "$current") ;;
    *" collections") mapfile -t COMPREPLY < <(compgen -W "--names --store $output" -- "$current") ;;
    *" show") mapfile -t COMPREPLY < <(compgen -W "--store $output" -- "$current") ;;
    *" rename") mapfile -t COMPREPLY < <(compgen -W "--force --store --help" -- "$current") ;;
    *" remove") mapfile -t COMPREPLY < <(compgen -W "--below --store --help" -- "$current") ;;
    *" export")
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -W "--force --store --help" -- "$current") ;;
    *" load")
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -W "--as --force --store --help" -- "$current") ;;
    *" check" | *" compact") mapfile -t COMPREPLY < <(compgen -W "--store --help" -- "$current") ;;
    *" lists") mapfile -t COMPREPLY < <(compgen -W "$lists --find --depth $output" -- "$current") ;;
    *" attributes") mapfile -t COMPREPLY < <(compgen -W "--help" -- "$current") ;;
  esac
}
complete -F _zvplaylist zvplaylist
