-- expect: 4
return count of words of "Hello, wide-open world!"
