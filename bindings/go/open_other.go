//go:build !windows

package dialwright

import "os"

func openShared(path string) (*os.File, error) { return os.Open(path) }
