-- expect source: {true, true}
considering numeric strings
	{"1.10.1" > "1.9.4", "5" < "10"}
end considering
