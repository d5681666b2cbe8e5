# Puts a word on din: its eight bits from the left, then the time.
FORCE C din[7] $ARG1 $ARG9 ; FORCE C din[6] $ARG2 $ARG9 ; FORCE C din[5] $ARG3 $ARG9 ; FORCE C din[4] $ARG4 $ARG9
FORCE C din[3] $ARG5 $ARG9 ; FORCE C din[2] $ARG6 $ARG9 ; FORCE C din[1] $ARG7 $ARG9 ; FORCE C din[0] $ARG8 $ARG9
