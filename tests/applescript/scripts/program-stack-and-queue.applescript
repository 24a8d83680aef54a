-- expect: c b a / a b c
on newStack()
	script
		property contents_ : {}
		on push(x)
			set end of contents_ to x
		end push
		on pop()
			set x to last item of contents_
			if (count contents_) = 1 then
				set contents_ to {}
			else
				set contents_ to items 1 thru -2 of contents_
			end if
			return x
		end pop
		on dequeue()
			set x to first item of contents_
			set contents_ to rest of contents_
			return x
		end dequeue
		on isEmpty()
			return contents_ = {}
		end isEmpty
	end script
end newStack
set s to newStack()
set q to newStack()
repeat with x in {"a", "b", "c"}
	s's push(contents of x)
	q's push(x as text)
end repeat
set answer to ""
repeat until s's isEmpty()
	set answer to answer & s's pop() & " "
end repeat
set answer to answer & "/"
repeat until isEmpty() of q
	set answer to answer & " " & q's dequeue()
end repeat
return answer
