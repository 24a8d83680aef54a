-- expect: ran
script s
	on run
		return "ran"
	end run
end script
run s
