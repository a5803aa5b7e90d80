module dialwright

go 1.19
