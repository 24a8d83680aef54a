-- expect source: {false, true, true, true}
set r to {}
considering case
	set end of r to "abc" = "ABC"
	ignoring white space
		set end of r to "a b c" = "abc"
	end ignoring
end considering
considering case but ignoring diacriticals and punctuation
	set end of r to "résumé!" = "resume"
end considering
ignoring hyphens, white space
	set end of r to "anti-war hero" = "antiwarhero"
end ignoring
r
