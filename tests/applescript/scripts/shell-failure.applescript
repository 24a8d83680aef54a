-- expect error: 1
-- expect message: sh: nothing: not found
do shell script "nothing"
