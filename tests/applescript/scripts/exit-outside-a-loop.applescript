-- expect error: -2755
exit repeat
