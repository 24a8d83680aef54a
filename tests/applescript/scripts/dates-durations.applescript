-- expect: 60 3600 86400 604800
set AppleScript's text item delimiters to " "
return {minutes, hours, days, weeks} as text
