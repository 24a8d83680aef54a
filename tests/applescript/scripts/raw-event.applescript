-- expect: 3
return «event sysoexec» "echo 3"
