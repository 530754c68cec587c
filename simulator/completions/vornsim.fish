# Completion of vornsim for fish: copy it to ~/.config/fish/completions. docs/simulator.md tells more.

# The shipped worlds with their questions, from the program as it was typed.
function __vornsim_worlds
    set -l program (string replace -r '^~/' "$HOME/" -- (commandline -opc)[1])
    $program worlds 2> /dev/null | string replace -r ' +' \t
end

# The arguments before the cursor, the command included: options and their values do not count.
function __vornsim_arguments
    set -l value no
    for word in (commandline -opc)[2..-1]
        if test $value = yes
            set value no
        else if contains -- $word --format --order --seed --config --plugin --subject
            set value yes
        else if not string match -q -- '-*' $word
            echo $word
        end
    end
end

# Whether the command is $argv[1] and, where $argv[2] is given, so many arguments stand behind it.
function __vornsim_in
    set -l arguments (__vornsim_arguments)
    test "$arguments[1]" = $argv[1]; or return 1
    test (count $argv) = 1; or test (count $arguments) = (math $argv[2] + 1)
end

function __vornsim_without_command
    test (count (__vornsim_arguments)) = 0
end

complete -c vornsim -f

complete -c vornsim -n __vornsim_without_command -s h -l help -d 'Print the commands'
complete -c vornsim -n __vornsim_without_command -l version -d 'Print the version'
complete -c vornsim -n __vornsim_without_command -l subject -r -F -d 'The framework that run plays against'
complete -c vornsim -n __vornsim_without_command -a run -d 'Play worlds and show what reaches the game'
complete -c vornsim -n __vornsim_without_command -a worlds -d 'List the shipped worlds and the questions they answer'
complete -c vornsim -n __vornsim_without_command -a new -d 'Write a world to begin with'
complete -c vornsim -n __vornsim_without_command -a explain -d 'Tell what a result means, and what to check'
complete -c vornsim -n __vornsim_without_command -a doctor -d 'Check how a game integrates the plugin'

complete -c vornsim -n '__vornsim_in run' -s h -l help -d 'Print the arguments and options'
complete -c vornsim -n '__vornsim_in run' -l format -x -a 'text json html none' -d 'What to print'
complete -c vornsim -n '__vornsim_in run' -l order -x -a 'request time' -d 'How text is ordered'
complete -c vornsim -n '__vornsim_in run' -l seed -x -a 'random' -d 'What decides where chance does'
complete -c vornsim -n '__vornsim_in run' -l config -r -F -d 'The configuration of the core'
complete -c vornsim -n '__vornsim_in run' -l plugin -r -F -d 'The library of the plugin'
complete -c vornsim -n '__vornsim_in run' -l show-tokens -d 'Show access tokens'
complete -c vornsim -n '__vornsim_in run' -k -a '(__fish_complete_suffix .world.json)'
complete -c vornsim -n '__vornsim_in run' -a '(__vornsim_worlds)'

complete -c vornsim -n '__vornsim_in worlds' -s h -l help -d 'Print the arguments and options'
complete -c vornsim -n '__vornsim_in worlds' -l format -x -a 'text json' -d 'What to print'

complete -c vornsim -n '__vornsim_in new' -s h -l help -d 'Print the arguments and options'

complete -c vornsim -n '__vornsim_in explain' -s h -l help -d 'Print the arguments and options'
complete -c vornsim -n '__vornsim_in explain' -l format -x -a 'text json' -d 'What to print'
complete -c vornsim -n '__vornsim_in explain 0' -a 'login logout share send-message invite add-friend query-friends'
complete -c vornsim -n '__vornsim_in explain 1' -a none

complete -c vornsim -n '__vornsim_in doctor' -s h -l help -d 'Print the arguments and options'
complete -c vornsim -n '__vornsim_in doctor' -l format -x -a 'text json' -d 'What to print'
complete -c vornsim -n '__vornsim_in doctor 0' -F
