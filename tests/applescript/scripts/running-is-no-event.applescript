-- expect: true false false
-- expect events: 
set AppleScript's text item delimiters to " "
return {application "Garden" is running, application "Nowhere" is running, application "Garden" is not running} as text
