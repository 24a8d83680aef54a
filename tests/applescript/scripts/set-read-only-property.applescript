-- expect error: -10003
tell application "Garden" to set ripe of plant 1 of bed 1 to true
