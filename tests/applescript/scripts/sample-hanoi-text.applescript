-- expect none
-- expect log: "Move disk 1 from A to B"
-- expect log: "Move disk 2 from A to C"
-- expect log: "Move disk 1 from B to C"
on move_disks(n, source, target, spare)
	if n > 0 then
		move_disks(n - 1, source, spare, target)
		log "Move disk " & n & " from " & source & " to " & target
		move_disks(n - 1, spare, target, source)
	end if
end move_disks
move_disks(2, "A", "C", "B")
