-- expect: 2
set l to {1}
copy 2 to end of l
return last item of l
