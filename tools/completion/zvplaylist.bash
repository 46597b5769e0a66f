# Completion of zvplaylist for bash.

_zvplaylist_options() {
  local sources="--from --store --scan --import --map --language --quiet"
  local playlist="$sources --format --output" fill="--into --store --again --language --quiet"
  case $1 in
    generate) echo "--seed --random $playlist" ;;
    like) echo "--max --per-artist --per-album --random $playlist" ;;
    grid) echo "--mood --genre --era --origin --exclude --estimate $playlist" ;;
    info) echo "$playlist" ;;
    explain) echo "$sources --output" ;;
    scan) echo "$fill" ;;
    import) echo "$fill --map" ;;
    collections) echo "--names --store --format --output" ;;
    show) echo "--store --format --output" ;;
    rename | export) echo "--force --store" ;;
    remove) echo "--below --store" ;;
    load) echo "--as --force --store" ;;
    check | compact) echo "--store" ;;
    validate) echo "--language" ;;
    lists) echo "--find --depth --language --format --output" ;;
  esac
}

# How many words between the command and the current one are no options and no values of theirs.
_zvplaylist_positionals() {
  local i count=0
  for ((i = 2; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
      --store | --below | --format | -o | --output | --as | --config) ((i++)) ;;
      -*) ;;
      *) ((count++)) ;;
    esac
  done
  echo "$count"
}

# Those of the store that the line names, or else of the usual one.
_zvplaylist_collections() {
  local name i store=()
  for ((i = 2; i < COMP_CWORD - 1; i++)); do
    [[ ${COMP_WORDS[i]} == --store ]] && store=(--store "${COMP_WORDS[i + 1]/#\~/$HOME}")
  done
  while IFS= read -r name; do
    [[ $name == "$current"* ]] && COMPREPLY+=("$(printf %q "$name")")
  done < <("${COMP_WORDS[0]}" collections --names "${store[@]}" 2>/dev/null)
}

# The attribute that is being written in a quoted statement. With a second candidate for a single one the
# quote stays open.
_zvplaylist_attributes() {
  local name text=${current:1}
  local word=${text##*[!A-Za-z_]}
  [[ $word ]] || return
  while IFS= read -r name; do
    [[ $name == "$word"* ]] && COMPREPLY+=("${text%"$word"}$name")
  done < <("${COMP_WORDS[0]}" attributes 2>/dev/null)
  [[ ${#COMPREPLY[@]} == 1 ]] && COMPREPLY+=("${COMPREPLY[0]} ")
}

# What may stand where neither an option's value nor an option does.
_zvplaylist_argument() {
  case $1 in
    generate | validate | explain) [[ $current == [\"\']* ]] && _zvplaylist_attributes ;;
    scan) compopt -o filenames; _zvplaylist_words -d ;;
    import | load | like | info) compopt -o filenames; _zvplaylist_words -f ;;
    show | rename | remove | export)
      if [[ $(_zvplaylist_positionals) == 0 ]]; then
        _zvplaylist_collections
      elif [[ $1 == export || $1 == remove ]]; then
        compopt -o filenames; _zvplaylist_words -f
      fi ;;
    lists) _zvplaylist_words -W "genres moods eras tempos origins artist-types" ;;
  esac
}

_zvplaylist_words() {
  mapfile -t COMPREPLY < <(compgen "$@" -- "$current")
}

_zvplaylist() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]}
  local commands="generate like grid info validate explain lists attributes"
  commands+=" scan import collections show rename remove export load check compact"
  local fields="ident= location= title= artist= album= date= tempo= valence= energy= subgenre= genre= mood="
  fields+=" era= origin= artist_type="
  COMPREPLY=()
  if [[ $current == "=" ]]; then  # --option=value are three words
    current=
  elif [[ $previous == "=" ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  case $previous in
    --from | --into) _zvplaylist_collections ;;
    --scan | --store | --below) compopt -o filenames; _zvplaylist_words -d ;;
    --import | -o | --output | --config) compopt -o filenames; _zvplaylist_words -f ;;
    --format)
      case $command in
        generate | like | grid) _zvplaylist_words -W "text m3u8 xspf json" ;;
        *) _zvplaylist_words -W "text json" ;;
      esac ;;
    --language) _zvplaylist_words -W "eng ger fre" ;;
    --map) compopt -o nospace; _zvplaylist_words -W "$fields" ;;
    --exclude) compopt -o nospace; _zvplaylist_words -W "mood: genre: era: origin:" ;;
    --as | --seed | --random | --max | --per-artist | --per-album | --find | --depth | --mood | --genre | --era | --origin) ;;
    *)
      if ((COMP_CWORD == 1)); then
        _zvplaylist_words -W "$commands --help --version"
      elif [[ $current == -* ]]; then
        _zvplaylist_words -W "$(_zvplaylist_options "$command") --config --help"
      else
        _zvplaylist_argument "$command"
      fi ;;
  esac
}
complete -F _zvplaylist zvplaylist
