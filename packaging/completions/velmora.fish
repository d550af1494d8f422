# Completion of velmora's options for fish.
complete -c velmora -f
complete -c velmora -s h -l help -d 'Show the help'
complete -c velmora -s v -l version -d 'Show the version'
complete -c velmora -l program-folder -x -a '(__fish_complete_directories)' -d 'Keep settings and log in this folder'
complete -c velmora -l capture -d 'Capture without windows'
complete -c velmora -l passes -x -d 'With --capture, end after so many passes'
complete -c velmora -l film -x -d 'Make a film of a camera: g:r from to out'
complete -c velmora -l hours -x -d 'With --film, only these hours'
complete -c velmora -l every -x -d 'With --film, only every n-th image'
complete -c velmora -l seconds -x -d 'With --film, last so long'
complete -c velmora -l fps -x -d 'With --film, images a second'
complete -c velmora -l size -x -d 'With --film, size of the film'
complete -c velmora -l stamp -d 'With --film, write date and camera into the pictures'
