# Completion of tolvgraph-viewer for fish.

# Files with one of these suffixes in letters of any case, and folders.
function __tolvgraph_viewer_files
    set -l suffixes (string join '|' $argv)
    set -l token (commandline --current-token)
    # The files that are offered to a command without completions.
    complete -C "'' $token" | string match --ignore-case --regex -- "^.*(?:/|\\.(?:$suffixes))\$"
end

complete -c tolvgraph-viewer -f -a '(__tolvgraph_viewer_files tolvgraph csv tsv txt dat asc npy f32 f64 wav wave flac aif aiff aifc ogg oga opus au snd caf w64 rf64 mp3 voc)'
complete -c tolvgraph-viewer -s h -l help -d 'Print the options'
complete -c tolvgraph-viewer -l help-all -d 'Print the options, those of Qt too'
complete -c tolvgraph-viewer -s v -l version -d 'Print the version'
