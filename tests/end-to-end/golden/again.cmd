DO again.cmd
