-- expect: true
ignoring white space, punctuation and hyphens
	return "a-b, c" is "ab c."
end ignoring
