# Completion of tolvgraph-viewer for bash, with the helpers of bash-completion.

_tolvgraph_viewer()
{
    local cur prev words cword
    _init_completion || return

    if [[ $cur == -* && " ${words[*]:1:cword-1} " != *' -- '* ]]; then
        COMPREPLY=($(compgen -W '-h --help --help-all -v --version' -- "$cur"))
        return
    fi
    _filedir '@(tolvgraph|csv|tsv|txt|dat|asc|npy|f32|f64|wav|wave|flac|aif|aiff|aifc|ogg|oga|opus|au|snd|caf|w64|rf64|mp3|voc)'
} &&
    complete -F _tolvgraph_viewer tolvgraph-viewer
