-- expect source: {{1, "x"}, 2, true, true, record}
{{a:1, b:"x"} as list, count {a:1, b:2}, {a:1} = {a:1}, {a:1, b:2} contains {b:2}, class of {a:1}}
