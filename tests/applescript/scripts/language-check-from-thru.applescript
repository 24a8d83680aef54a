-- expect source: {true, false}
to inRange for n from low thru high
	return n ≥ low and n ≤ high
end inRange
{inRange for 8 from 7 thru 10, inRange for 11 from 7 thru 10}
