-- expect source: {true, false}
on isPalindrome(s)
	set cleaned to ""
	repeat with c in s
		set c to c as text
		if c is in "abcdefghijklmnopqrstuvwxyz" then set cleaned to cleaned & c
	end repeat
	return cleaned = (reverse of characters of cleaned) as text
end isPalindrome
{isPalindrome("A man, a plan, a canal: Panama"), isPalindrome("abc")}
