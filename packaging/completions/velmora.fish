# Completion of velmora's options for fish.
complete -c velmora -f
complete -c velmora -s h -l help -d 'Show the help'
complete -c velmora -s v -l version -d 'Show the version'
complete -c velmora -l program-folder -x -a '(__fish_complete_directories)' -d 'Keep settings and log in this folder'
complete -c velmora -l capture -d 'Capture without windows'
complete -c velmora -l passes -x -d 'With --capture, end after so many passes'
