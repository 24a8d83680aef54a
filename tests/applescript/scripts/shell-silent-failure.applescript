-- expect error: 3
-- expect message: The command exited with a non-zero status.
do shell script "silent failure"
