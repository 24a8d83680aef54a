-- expect error: -2750
do shell script "x" password "a" password "b"
