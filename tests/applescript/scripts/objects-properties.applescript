-- expect: 3
script counter
	property count_ : 0
	on increment()
		set count_ to count_ + 1
	end increment
end script
counter's increment()
tell counter to increment()
tell counter
	increment()
end tell
return counter's count_
