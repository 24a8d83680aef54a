-- expect: hi
do shell script "echo " & "hi"
