# A session without a user: runs the command file $ARG1, leaves a picture of the screen in $ARG2, ends.
DO $ARG1
SYSTEM "import -window root $ARG2"
QUIT
