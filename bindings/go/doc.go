// Package dialwright drives the windows of other programs through Dialwright.dll.
//
//	library, err := dialwright.Load("")
//	...
//	line, err := dialwright.Command("Window.SetText", "#32770", dialwright.Literal("Sign in (1)"), 1001, "Ada")
//	...
//	err = library.Execute(line)
//
// Lines can be written on any system; the library is for 64-bit Windows, x64 and ARM64. Every call blocks its goroutine,
// and one thread with it, until it is done. Nothing here writes to standard output; the library itself copies its log
// there.
package dialwright
