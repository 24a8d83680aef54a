-- expect error: -1728
using terms from application "Nope"
	1
end using terms from
