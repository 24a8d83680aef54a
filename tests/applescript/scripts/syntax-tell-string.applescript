-- expect source: {"hello", 11, "h"}
tell "hello world"
	set a to first word
	set b to its length
	set c to character 1 of it
end tell
{a, b, c}
