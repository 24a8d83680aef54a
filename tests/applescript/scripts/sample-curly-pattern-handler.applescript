-- expect source: {4, 6}
on addPoint({x1, y1}, {x2, y2})
	{x1 + x2, y1 + y2}
end addPoint
addPoint({1, 2}, {3, 4})
