# Completion of tarn-studio for bash.
_tarn_studio()
{
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]} word command=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            --check | --pack | --unpack | diff | merge) command=$word ;;
        esac
    done
    local options
    case $command in
        --check) options='--json --size --over-time --lang --help' ;;
        --pack) options='--lang --help' ;;
        --unpack) options='--replace --lang --help' ;;
        diff) options='--json --git --lang --help' ;;
        merge) options='-o --ours --theirs --window --lang --help' ;;
        *) options='--lang --theme --render --size --screen --dialog --time --timebar --fps --play --fullscreen --texts --record
            --replay --script --recovery --plugins --help --version --check --pack --unpack diff merge' ;;
    esac
    COMPREPLY=()
    compopt -o filenames 2>/dev/null
    case $prev in
        --lang) COMPREPLY=($(compgen -W 'zh en' -- "$cur")) && return ;;
        --theme) COMPREPLY=($(compgen -W 'light dark' -- "$cur")) && return ;;
        --size | --screen) COMPREPLY=($(compgen -W '1280x720 1920x1080 2560x1440 720x1280' -- "$cur")) && return ;;
        --plugins | --pack) COMPREPLY=($(compgen -d -- "$cur")) && return ;;
        --record | --replay) COMPREPLY=($(compgen -d -- "$cur") $(compgen -f -X '!*.tarn-input' -- "$cur")) && return ;;
        --script) COMPREPLY=($(compgen -d -- "$cur") $(compgen -f -X '!*.lua' -- "$cur")) && return ;;
        --dialog | --time | --timebar | --fps) return ;;
    esac
    if [[ $cur == -* || ($COMP_CWORD -eq 1 && -n $cur && ! -e $cur) ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
    fi
    COMPREPLY+=($(compgen -d -- "$cur") $(compgen -f -X '!*.@(tarn|png)' -- "$cur"))
}
complete -F _tarn_studio tarn-studio
