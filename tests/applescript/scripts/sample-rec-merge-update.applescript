-- expect source: {443, "localhost", true}
set defaults to {host:"localhost", port:80, secure:false}
set given_ to {port:443, secure:true}
set merged to given_ & defaults
{port of merged, host of merged, secure of merged}
