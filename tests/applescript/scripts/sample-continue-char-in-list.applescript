-- expect source: {"a", "b"}
set l to {¬
	"a", ¬
	"b" ¬
		}
l
