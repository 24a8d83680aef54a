-- expect: 1-2-3
on join of a from b given last:c
	return (a as text) & "-" & b & "-" & c
end join
return join of 1 given last:3 from 2
