-- expect source: {"January", "February", "March"}
set names to {}
repeat with m in {January, February, March}
	set end of names to m as text
end repeat
names
