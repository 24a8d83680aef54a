-- expect source: {2, 1}
script linkedList
	property head : missing value
	on add(v)
		set head to {value:v, link:head}
	end add
	on toList()
		set r to {}
		set n to head
		repeat while n is not missing value
			set end of r to value of n
			set n to link of n
		end repeat
		return r
	end toList
end script
linkedList's add(1)
linkedList's add(2)
linkedList's toList()
