-- expect source: 2
offset of "b" in {"a", "b"}
