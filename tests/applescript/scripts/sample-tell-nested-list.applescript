-- expect source: {"a", 2}
set data_ to {names:{"a", "b"}, n:2}
tell data_
	set x to first item of its names
	set y to n of it
end tell
{x, y}
