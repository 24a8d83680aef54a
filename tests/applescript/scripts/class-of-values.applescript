-- expect: true
set ok to {class of "a" is text, class of "a" is string, class of 5 is integer, class of 0.5 is real, class of {} is list, class of {a:1} is record, class of true is boolean}
return ok does not contain false
