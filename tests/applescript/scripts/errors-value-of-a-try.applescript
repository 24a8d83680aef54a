-- expect: 3
try
	1 + 2
end try
