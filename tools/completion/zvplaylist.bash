# Completion of zvplaylist for bash.
_zvplaylist() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local commands="generate like grid info validate explain lists attributes"
  local output="--format --output --language --help"
  local sources="--scan --import --map --quiet $output"
  local lists="genres moods eras tempos origins artist-types"
  local fields="ident= location= title= artist= album= date= tempo= valence= energy= subgenre= genre= mood="
  fields+=" era= origin= artist_type="
  COMPREPLY=()
  case $previous in
    --scan) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    --import | -o | --output)
      compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
    --format) mapfile -t COMPREPLY < <(compgen -W "text m3u8 xspf json" -- "$current"); return ;;
    --language) mapfile -t COMPREPLY < <(compgen -W "eng ger fre" -- "$current"); return ;;
    --map) compopt -o nospace; mapfile -t COMPREPLY < <(compgen -W "$fields" -- "$current"); return ;;
    --exclude) compopt -o nospace; mapfile -t COMPREPLY < <(compgen -W "mood: genre: era: origin:" -- "$current"); return ;;
    --seed | --random | --max | --per-artist | --per-album | --find | --depth | --mood | --genre | --era | --origin) return ;;
  esac
  case "$COMP_CWORD ${COMP_WORDS[1]}" in
    "1 "*) mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current") ;;
    *" generate") mapfile -t COMPREPLY < <(compgen -W "--seed --random $sources" -- "$current") ;;
    *" like")
      mapfile -t COMPREPLY < <(compgen -W "--max --per-artist --per-album --random $sources" -- "$current") ;;
    *" validate") mapfile -t COMPREPLY < <(compgen -W "--language --help" -- "$current") ;;
    *" explain") mapfile -t COMPREPLY < <(compgen -W "$sources" -- "$current") ;;
    *" grid")
      mapfile -t COMPREPLY < <(compgen -W "--mood --genre --era --origin --exclude --estimate $sources" -- "$current") ;;
    *" info") mapfile -t COMPREPLY < <(compgen -W "$sources" -- "$current") ;;
    *" lists") mapfile -t COMPREPLY < <(compgen -W "$lists --find --depth $output" -- "$current") ;;
    *" attributes") mapfile -t COMPREPLY < <(compgen -W "--help" -- "$current") ;;
  esac
}
complete -F _zvplaylist zvplaylist
