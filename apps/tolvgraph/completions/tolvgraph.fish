# Completion of tolvgraph for fish.

# Files with one of these suffixes in letters of any case, and folders.
function __tolvgraph_files
    set -l suffixes (string join '|' $argv)
    set -l token (commandline --current-token | string replace --regex '^--[a-z-]*=' '')
    # The files that are offered to a command without completions.
    complete -C "'' $token" | string match --ignore-case --regex -- "^.*(?:/|\\.(?:$suffixes))\$"
end

# A list with commas: its last part is completed by the words.
function __tolvgraph_list
    set -l before (string match --regex '^.*,' -- (commandline --current-token | string replace --regex '^--[a-z-]*=' ''))
    set -q before[1]; or set before ''
    printf '%s\n' $before$argv
end

complete -c tolvgraph -f -a '(__tolvgraph_files csv tsv txt dat asc npy f32 f64 wav wave flac aif aiff aifc ogg oga opus au snd caf w64 rf64 mp3 voc)'
complete -c tolvgraph -s o -l output -x -a '(__tolvgraph_files pdf ps eps svg png tif tiff)' -d 'Write a picture'
complete -c tolvgraph -l size -x -d 'Size in points (WxH)'
complete -c tolvgraph -l scale -x -d 'Pixels a point in PNG and TIFF'
complete -c tolvgraph -l x -x -a 'index\t"The row number"' -d 'Column of x'
complete -c tolvgraph -l y -x -d 'Columns to draw, separated by commas'
complete -c tolvgraph -l channels -x -d 'Channels side by side in raw numbers'
complete -c tolvgraph -l x-range -x -d 'Visible x range (A:B)'
complete -c tolvgraph -l y-range -x -d 'Visible y range (A:B)'
complete -c tolvgraph -l title -x -d 'Title above the graph'
complete -c tolvgraph -l x-label -x -d 'Title of the x axis'
complete -c tolvgraph -l y-label -x -d 'Title of the y axis'
complete -c tolvgraph -l draw -x -a 'curve\t"With values at markers" plain-curve\t"The curve alone" dotted\t"Evenly spaced dots" x\t"Crosses" impulse\t"Lines from below" bar\t"Bars of categories" line\t"Values of categories"' -d 'How to draw'
complete -c tolvgraph -l x-axis -x -a 'linear log bar\t"Categories with room for bars" line\t"Categories with room for points"' -d 'Scale of x'
complete -c tolvgraph -l y-axis -x -a 'linear log' -d 'Scale of y'
complete -c tolvgraph -l categories -x -a 'index\t"The row number"' -d "Column of the categories' texts"
complete -c tolvgraph -l x-format -x -a 'decimal adaptive si scientific date' -d 'Numbers of x'
complete -c tolvgraph -l y-format -x -a 'decimal adaptive si scientific date' -d 'Numbers of y'
complete -c tolvgraph -l color -x -d 'Colours of the series, hexadecimal, separated by commas'
complete -c tolvgraph -l pattern -x -a '(__tolvgraph_list solid dashed dash-dot dotted)' -d 'Line patterns of the series'
complete -c tolvgraph -l thickness -x -d 'Line widths of the series in points, separated by commas'
complete -c tolvgraph -l marker -x -d 'Mark an x value'
complete -c tolvgraph -l layout -x -a '(__tolvgraph_files json)' -d 'Write where everything stands'
complete -c tolvgraph -l margin -x -d 'Space around the data area in points (T,L,B,R)'
complete -c tolvgraph -l legend -d 'Name the series below the graph'
complete -c tolvgraph -l list-columns -d 'List the columns of the files'
complete -c tolvgraph -l version -d 'Print the version'
complete -c tolvgraph -s h -l help -d 'Print all options'
