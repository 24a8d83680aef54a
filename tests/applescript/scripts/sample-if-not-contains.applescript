-- expect source: "ok!"
set t to "hello"
if t does not contain "z" and not (t contains "q") then
	set r to "ok"
end if
if not t is "x" then set r to r & "!"
r
