-- expect: Tuesday, November 14, 2023 at 10:13:20 PM
return (current date) as text
