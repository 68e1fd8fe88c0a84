# Prints what the completion of bash gives for some words, the last of which is completed.
# Arguments: the script with the completion, the line, its words as readline ends them.
source "$1"
COMP_LINE=$2 COMP_POINT=${#2}
shift 2
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
_filem filem
printf '%s\n' "${COMPREPLY[@]}"
