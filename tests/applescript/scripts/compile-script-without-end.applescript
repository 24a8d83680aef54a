-- expect error: -2741
script s
	property a : 1
