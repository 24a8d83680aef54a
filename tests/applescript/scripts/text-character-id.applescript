-- expect: Aé
return character id 65 & character id 233
