-- expect source: {3, 2, 2, 1}
script Stack
	property items_ : {}
	on push(x)
		set end of items_ to x
	end push
	on pop()
		if items_ is {} then error "Stack is empty" number 500
		set x to last item of items_
		if (count items_) = 1 then
			set items_ to {}
		else
			set items_ to items 1 thru -2 of items_
		end if
		return x
	end pop
	on size()
		return length of items_
	end size
end script
tell Stack
	push(1)
	push(2)
	push(3)
	set a to pop()
end tell
{a, Stack's size(), Stack's pop(), Stack's pop()}
