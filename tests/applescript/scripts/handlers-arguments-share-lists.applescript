-- expect: 2
on grow(l)
	set end of l to "new"
end grow
set mine to {1}
grow(mine)
return length of mine
