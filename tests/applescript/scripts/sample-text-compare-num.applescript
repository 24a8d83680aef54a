-- expect source: {true, false, false, true}
{"10" as number > 9, "1" = 1, 1 = "1", 1 as text = "1"}
