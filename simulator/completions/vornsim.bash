# Completion of vornsim for bash: source this file. docs/simulator.md tells more.

# Sets COMPREPLY to those of the words that begin with what is typed: $1 is that, the rest are the words.
_vornsim_words() {
  local typed=$1 word
  shift
  COMPREPLY=()
  for word in "$@"; do
    [[ $word == "$typed"* ]] && COMPREPLY+=("$word")
  done
}

# Adds files and folders that begin with $1; of files only those that end with $2.
_vornsim_files() {
  local path
  compopt -o filenames 2> /dev/null # Shows a slash behind folders and quotes blanks.
  while IFS= read -r path; do
    [[ -d $path || $path == *"$2" ]] && COMPREPLY+=("$path")
  done < <(compgen -f -- "$1")
}

# The names of the shipped worlds; $1 is the program as it was typed.
_vornsim_worlds() {
  local name
  while read -r name _; do
    printf '%s\n' "$name"
  done < <("${1/#\~\//$HOME/}" worlds 2> /dev/null)
}

# The words that go where the cursor is. $1 is the program as it was typed.
_vornsim() {
  local program=$1 typed=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local command='' only_arguments='' count=0 index word
  COMPREPLY=()

  # "=" is a word of its own in "--format=json".
  if [[ $typed == '=' ]]; then
    typed=''
  elif [[ $before == '=' ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  # The command, and how many arguments stand before the cursor.
  for ((index = 1; index < COMP_CWORD; index++)); do
    word=${COMP_WORDS[index]}
    if [[ -z $only_arguments && $word == -- ]]; then
      only_arguments=yes
    elif [[ -z $only_arguments && $word =~ ^--(format|order|seed|config|plugin|subject)$ ]]; then
      [[ ${COMP_WORDS[index + 1]} == '=' ]] && index=$((index + 1))
      index=$((index + 1))
    elif [[ -z $only_arguments && $word == -* ]]; then
      :
    elif [[ -z $command ]]; then
      command=$word
    else
      count=$((count + 1))
    fi
  done

  if [[ -z $only_arguments ]]; then
    case $command$before in
      run--format) _vornsim_words "$typed" text json html none; return ;;
      worlds--format | explain--format | doctor--format) _vornsim_words "$typed" text json; return ;;
      run--order) _vornsim_words "$typed" request time; return ;;
      run--seed) _vornsim_words "$typed" random; return ;;
      run--config) _vornsim_files "$typed" .json; return ;;
      run--plugin) _vornsim_files "$typed" .so; return ;;
      --subject | run--subject) _vornsim_files "$typed" ''; return ;;
    esac
  fi

  if [[ -z $only_arguments && $typed == -* ]]; then
    case $command in
      '') _vornsim_words "$typed" -h --help --version --subject ;;
      run) _vornsim_words "$typed" -h --help --format --order --seed --config --plugin --show-tokens ;;
      worlds | explain | doctor) _vornsim_words "$typed" -h --help --format ;;
      new) _vornsim_words "$typed" -h --help ;;
    esac
    return
  fi

  case $command in
    '') _vornsim_words "$typed" run worlds new explain doctor ;;
    run)
      local worlds
      mapfile -t worlds < <(_vornsim_worlds "$program")
      _vornsim_words "$typed" "${worlds[@]}"
      _vornsim_files "$typed" .world.json
      ;;
    explain)
      case $count in
        0) _vornsim_words "$typed" login logout share send-message invite add-friend query-friends ;;
        1) _vornsim_words "$typed" none ;;
      esac
      ;;
    doctor) [[ $count == 0 ]] && _vornsim_files "$typed" '' ;;
  esac
}

complete -F _vornsim vornsim
