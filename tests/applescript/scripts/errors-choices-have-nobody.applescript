-- expect: -1713 -1713 -1713
set codes to {}
try
	choose from list {"a"} with prompt "?" default items {"a"} with multiple selections allowed
on error number n
	set end of codes to n
end try
try
	choose file with prompt "?" of type {"txt"}
on error number n
	set end of codes to n
end try
try
	choose folder with prompt "?"
on error number n
	set end of codes to n
end try
set AppleScript's text item delimiters to " "
return codes as text
