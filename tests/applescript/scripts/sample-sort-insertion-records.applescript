-- expect source: {"Bob", "Cy", "Ann"}
on sortByAge(people)
	repeat with i from 2 to length of people
		set current to item i of people
		set j to i - 1
		repeat while j > 0
			if age of item j of people ≤ age of current then exit repeat
			set item (j + 1) of people to item j of people
			set j to j - 1
		end repeat
		set item (j + 1) of people to current
	end repeat
	people
end sortByAge
set ps to {{name:"Ann", age:40}, {name:"Bob", age:25}, {name:"Cy", age:31}}
set r to {}
repeat with p in sortByAge(ps)
	set end of r to p's name
end repeat
r
