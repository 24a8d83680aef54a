-- expect: it's
return do shell script "echo " & "it's"
