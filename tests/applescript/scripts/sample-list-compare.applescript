-- expect source: {true, false, true, true, true, true, true, true, false, true}
{{1, 2} = {1, 2}, {1, 2} is {2, 1}, {1, 2, 3} contains {2, 3}, {1, 2, 3} contains 2, {1, 2, 3} starts with 1, {1, 2, 3} ends with {2, 3}, 2 is in {1, 2}, {} = {}, {{1}} contains {1}, {{1}} contains {{1}}}
