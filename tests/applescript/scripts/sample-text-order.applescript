-- expect source: {true, true, true, true, true, true}
{"a" < "B", "apple" < "Banana", "é" > "e", "10" < "9", "" < "a", "Zebra" comes after "apple"}
