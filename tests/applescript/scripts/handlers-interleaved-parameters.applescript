-- expect: 50
on areaWithWidth:w height:h
	return w * h
end areaWithWidth:height:
return my areaWithWidth:5 height:10
