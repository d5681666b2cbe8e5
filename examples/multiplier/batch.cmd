# The multiplier without a user: simulate, take a picture of the screen, end.
# $ARG1: the folder of this file; $ARG2: the picture.
DO $ARG1/multiplier.cmd $ARG1
SYSTEM "import -window root $ARG2"
QUIT
