# Runs the command file $ARG1 and leaves a picture of the page in $ARG2.
DO $ARG1
HARDCOPY $ARG2
