-- expect: the=3 cat=2 saw=1 other=1
on add(word_, counts)
	repeat with entry in counts
		if key of entry is word_ then
			set times of entry to (times of entry) + 1
			return
		end if
	end repeat
	set end of counts to {key:word_, times:1}
end add
set counts to {}
repeat with w in words of "The cat saw the other the cat"
	add(w as text, counts)
end repeat
set lines_ to {}
considering case
	repeat with entry in counts
		set k to key of entry
		if k is "The" then set k to "the"
		set end of lines_ to k & "=" & times of entry
	end repeat
end considering
set AppleScript's text item delimiters to " "
return lines_ as text
