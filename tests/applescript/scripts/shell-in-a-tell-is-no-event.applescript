-- expect: hi
-- expect events: 
tell application "Garden" to do shell script "echo hi"
