-- expect source: 2.5
on average(nums)
	set total to 0
	repeat with x in nums
		set total to total + x
	end repeat
	total / (count of nums)
end average
average({1, 2, 3, 4})
