-- expect: File wasn’t found.|User canceled.|AppleEvent timed out.|Unknown error.|A variable is not defined.|An error of type 42 has occurred.|
set all to ""
repeat with n in {-43, -128, -1712, -2700, -2753, 42}
	try
		error number n
	on error m
		set all to all & m & "|"
	end try
end repeat
all
