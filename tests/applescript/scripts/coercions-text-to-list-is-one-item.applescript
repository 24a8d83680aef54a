-- expect: 1
return count of ("abc" as list)
