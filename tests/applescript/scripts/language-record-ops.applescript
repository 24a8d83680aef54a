-- expect source: {"Matt", 9000, 3, 3, true, record}
set rec to {name:"Matt", mileage:8000}
set rec to rec & {color:"red"}
set mileage of rec to 9000
{name of rec, rec's mileage, count rec, length of rec, rec contains {color:"red"}, class of rec}
