# complete.zsh FOLDER FIFO LINE...: what zsh offers at the end of each line, separated by "|", with the functions of
# FOLDER. A terminal of its own is made for it; FIFO is the path of a pipe to make.
zmodload zsh/zpty
mkfifo $2
export FOLDER=$1 FIFO=$2
zpty shell zsh -f -i
zpty -w shell 'PS1=; fpath=($FOLDER $fpath); autoload -Uz compinit; compinit -u -D
compadd() {
    if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
    local -a hits
    builtin compadd -O hits "$@"
    offered+=($hits)
    (($#hits))
}
begin() { offered=(); zle complete-word; print -r -- ${(j:|:)${(u)offered}} >&9; zle kill-buffer }
zle -N begin; bindkey "^T" begin; exec 9>$FIFO'
exec 8<$2
for line in "${@[3,-1]}"; do
    zpty -w -n shell $line$'\x14'
    IFS= read -r -u 8 offered && print -r -- $offered
done
