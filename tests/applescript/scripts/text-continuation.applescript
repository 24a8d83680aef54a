-- expect: 6
return 1 + ¬
	2 + ¬
	3
