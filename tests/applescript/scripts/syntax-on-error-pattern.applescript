-- expect error: 5
try
	error number 5
on error number 6
	"six"
end try
