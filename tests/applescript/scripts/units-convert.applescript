-- expect source: {feet 12.0, yards 4.0, 144, feet, degrees Fahrenheit 212.0, miles 3.106855961187, liters 3.785411784, ounces 32.0, square feet 2.78784E+7, cubic feet 27.0, "12.0"}
set a to 12 as feet
{a, a as yards, a as inches as integer, class of a, 100 as degrees Celsius as degrees Fahrenheit, (5 as kilometers) as miles, 1 as gallons as litres, 2 as pounds as ounces, 1 as square miles as square feet, 1 as cubic yards as cubic feet, a as text}
