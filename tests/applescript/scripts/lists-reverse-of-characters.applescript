-- expect: olleh
return (reverse of characters of "hello") as text
