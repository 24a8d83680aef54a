-- expect: no file
try
	read POSIX file "/Users/me/none.txt"
on error number -43
	"no file"
end try
