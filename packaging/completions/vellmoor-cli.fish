set -l commands scan clean history put-back keep kept offer
set -l modules smartScan systemJunk largeFiles privacy appUninstaller performance memoryOptimization trash
complete -c vellmoor-cli -f
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a scan -d 'show what can be cleaned'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a clean -d 'move safe rows to the Trash'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a history -d 'list the cleans'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a put-back -d 'put back what a clean moved to the Trash'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a keep -d 'never offer these paths'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a kept -d 'list the kept paths'
complete -c vellmoor-cli -n "not __fish_seen_subcommand_from $commands" -a offer -d 'offer these paths again'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from scan clean" -a "$modules"
complete -c vellmoor-cli -n "__fish_seen_subcommand_from keep offer" -F
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean" -l yes -d 'do it'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean put-back" -l dry-run -d 'change nothing'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean" -l tick -x -d 'clean this row as well'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean" -l only -d 'clean the rows of --tick and no others'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean" -l for-good -d 'also what cannot be put back'
complete -c vellmoor-cli -n "__fish_seen_subcommand_from clean" -l memory -d 'also free memory'
complete -c vellmoor-cli -l json -d 'print JSON'
complete -c vellmoor-cli -l quiet -d 'no progress'
complete -c vellmoor-cli -l language -x -a 'zh en' -d 'the language of all texts'
complete -c vellmoor-cli -l help -d 'print help'
complete -c vellmoor-cli -l version -d 'print the version'
