-- expect: hello
to greet()
	return "hello"
end greet
greet()
