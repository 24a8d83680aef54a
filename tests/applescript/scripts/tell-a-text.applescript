-- expect: 5
tell "hello" to return its length
