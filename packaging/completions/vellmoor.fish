complete -c vellmoor -f
complete -c vellmoor -l module -x -a 'smartScan systemJunk largeFiles privacy appUninstaller performance memoryOptimization trash' -d 'open this module'
complete -c vellmoor -l scan -d 'start a scan of it; without --module, of everything'
complete -c vellmoor -l empty-trash -d 'look into the Trash and ask whether to empty it'
complete -c vellmoor -l gapplication-service -d 'wait until the session bus asks for the window'
complete -c vellmoor -s h -l help -d 'print help'
complete -c vellmoor -l version -d 'print the version'
