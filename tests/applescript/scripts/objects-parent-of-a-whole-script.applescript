-- expect: true
return parent is current application
