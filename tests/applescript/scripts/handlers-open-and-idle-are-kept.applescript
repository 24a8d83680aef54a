-- expect: 1
on open theFiles
	return theFiles
end open
on idle
	return 5
end idle
on quit
	continue quit
end quit
return 1
