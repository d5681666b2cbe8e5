# The counter of ../counter, once without a stop and once resumed from a state file: the lists must be equal.
DO stimuli.cmd
DO observe.cmd
# A state holds no pending changes: it is saved when the counter has settled.
RUN 615 A
SAVE STATE at_615
RUN 1000 A
WRITE LIST whole 616 1000
# Somewhere else ...
RUN 333
# ... and back: what follows is computed again.
RESTORE STATE at_615
RUN 1000 A
WRITE LIST resumed 616 1000
SYSTEM 'cmp whole resumed && echo lists are equal >verdict'
# A state of another design, or one that is cut, is not taken.
SYSTEM 'head -c 40 at_615 >cut ; head -c 20 at_615 >short'
RESTORE STATE cut
RESTORE STATE short
