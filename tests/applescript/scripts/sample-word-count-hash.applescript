-- expect source: {word_:"the", n:3}
set counts to {}
set theWords to words of "the cat the dog the end"
repeat with w in theWords
	set w to w as text
	set found to false
	repeat with c in counts
		if word_ of c is w then
			set n of c to (n of c) + 1
			set found to true
			exit repeat
		end if
	end repeat
	if not found then set end of counts to {word_:w, n:1}
end repeat
item 1 of counts
