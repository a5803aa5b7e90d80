module dialwright-example

go 1.19

require dialwright v0.0.0

replace dialwright => ../../bindings/go
