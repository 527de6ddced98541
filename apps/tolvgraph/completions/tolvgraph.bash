# Completion of tolvgraph for bash, with the helpers of bash-completion.

# A list with commas: its last part is completed by these words.
_tolvgraph_list()
{
    local before=
    [[ $cur == *,* ]] && before=${cur%,*},
    COMPREPLY=($(compgen -P "$before" -W "$1" -- "${cur##*,}"))
    compopt -o nospace 2>/dev/null
}

_tolvgraph()
{
    local cur prev words cword split
    _init_completion -s || return

    local readable='@(csv|tsv|txt|dat|asc|npy|f32|f64|wav|wave|flac|aif|aiff|aifc|ogg|oga|opus|au|snd|caf|w64|rf64|mp3|voc)'
    local word
    for word in "${words[@]:1:cword-1}"; do
        if [[ $word == -- ]]; then
            _filedir "$readable"
            return
        fi
    done

    case $prev in
        -o | --output)
            _filedir '@(pdf|ps|eps|svg|png|tif|tiff)'
            return
            ;;
        --layout)
            _filedir json
            return
            ;;
        --draw)
            COMPREPLY=($(compgen -W 'curve plain-curve dotted x impulse bar line' -- "$cur"))
            return
            ;;
        --x-axis)
            COMPREPLY=($(compgen -W 'linear log bar line' -- "$cur"))
            return
            ;;
        --y-axis)
            COMPREPLY=($(compgen -W 'linear log' -- "$cur"))
            return
            ;;
        --x-format | --y-format)
            COMPREPLY=($(compgen -W 'decimal adaptive si scientific date' -- "$cur"))
            return
            ;;
        --pattern)
            _tolvgraph_list 'solid dashed dash-dot dotted'
            return
            ;;
        --x | --categories)
            COMPREPLY=($(compgen -W 'index' -- "$cur"))
            return
            ;;
        --size | --scale | --y | --channels | --x-range | --y-range | --title | --x-label | --y-label | --color | --thickness | --marker | --margin)
            # Only the user knows these.
            return
            ;;
    esac
    $split && return

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '-o --output --size --scale --x --y --channels --x-range --y-range --title --x-label --y-label --draw --x-axis --y-axis --categories
            --x-format --y-format --color --pattern --thickness --marker --layout --margin --legend --list-columns --version -h --help' -- "$cur"))
        return
    fi
    _filedir "$readable"
} &&
    complete -F _tolvgraph tolvgraph
