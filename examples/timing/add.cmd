# From now on: 7 + 1 after the first parameter, 0 + 0 after the second; then one clock period runs.
FORCE C a[2] 1 $ARG1 ; FORCE C a[1] 1 $ARG1 ; FORCE C a[0] 1 $ARG1 ; FORCE C b[0] 1 $ARG1
FORCE C a[2] 0 $ARG2 ; FORCE C a[1] 0 $ARG2 ; FORCE C a[0] 0 $ARG2 ; FORCE C b[0] 0 $ARG2
RUN 100
