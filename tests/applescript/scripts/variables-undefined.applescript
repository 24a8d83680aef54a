-- expect error: -2753
-- expect message: The variable Foo is not defined.
return Foo
