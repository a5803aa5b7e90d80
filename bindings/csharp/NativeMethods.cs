// Not run: the calls want .NET on Windows. The part for .NET 8 was not compiled either; the other one was, with Mono.

using System;
using System.Runtime.InteropServices;

namespace Dialwright
{
#if NET8_0_OR_GREATER
    internal static partial class NativeMethods
    {
        private const string Name = "Dialwright.dll";

        /// <summary>Loads the library; every import below then comes from this file and no other.</summary>
        internal static void Load(string file)
        {
            IntPtr handle = NativeLibrary.Load(file);
            NativeLibrary.SetDllImportResolver(
                typeof(NativeMethods).Assembly, (name, _, _) => name == Name ? handle : IntPtr.Zero);
        }

        [LibraryImport(Name, StringMarshalling = StringMarshalling.Utf16)]
        internal static partial int ValidateCommand(string command);

        [LibraryImport(Name, StringMarshalling = StringMarshalling.Utf16)]
        internal static partial int ValidateScript(string script);

        [LibraryImport(Name, StringMarshalling = StringMarshalling.Utf16)]
        internal static partial int ExecuteCommand(string command);

        [LibraryImport(Name, StringMarshalling = StringMarshalling.Utf16)]
        internal static partial int ExecuteScript(string script);

        [LibraryImport(Name, StringMarshalling = StringMarshalling.Utf16)]
        internal static partial int ProgramLaunch(string program, string arguments, out uint processId);

        [LibraryImport("kernel32.dll")]
        internal static partial uint GetCurrentThreadId();
    }
#else
    internal static class NativeMethods
    {
        private const string Name = "Dialwright.dll";
        private const int BadExeFormat = 193;

        /// <summary>
        /// Loads the library; the imports below then find it by its name, as it is in the process already, and look
        /// in no folder where another one could lie.
        /// </summary>
        internal static void Load(string file)
        {
            if (LoadLibrary(file) != IntPtr.Zero) return;
            int error = Marshal.GetLastWin32Error();
            if (error == BadExeFormat) throw new BadImageFormatException(file);
            throw new DllNotFoundException(file + " cannot be loaded, error " + error);
        }

        [DllImport(Name, CharSet = CharSet.Unicode, ExactSpelling = true, CallingConvention = CallingConvention.Cdecl)]
        [DefaultDllImportSearchPaths(DllImportSearchPath.System32)]
        internal static extern int ValidateCommand(string command);

        [DllImport(Name, CharSet = CharSet.Unicode, ExactSpelling = true, CallingConvention = CallingConvention.Cdecl)]
        [DefaultDllImportSearchPaths(DllImportSearchPath.System32)]
        internal static extern int ValidateScript(string script);

        [DllImport(Name, CharSet = CharSet.Unicode, ExactSpelling = true, CallingConvention = CallingConvention.Cdecl)]
        [DefaultDllImportSearchPaths(DllImportSearchPath.System32)]
        internal static extern int ExecuteCommand(string command);

        [DllImport(Name, CharSet = CharSet.Unicode, ExactSpelling = true, CallingConvention = CallingConvention.Cdecl)]
        [DefaultDllImportSearchPaths(DllImportSearchPath.System32)]
        internal static extern int ExecuteScript(string script);

        [DllImport(Name, CharSet = CharSet.Unicode, ExactSpelling = true, CallingConvention = CallingConvention.Cdecl)]
        [DefaultDllImportSearchPaths(DllImportSearchPath.System32)]
        internal static extern int ProgramLaunch(string program, string arguments, out uint processId);

        [DllImport("kernel32.dll", ExactSpelling = true)]
        internal static extern uint GetCurrentThreadId();

        [DllImport("kernel32.dll", EntryPoint = "LoadLibraryW", CharSet = CharSet.Unicode, SetLastError = true)]
        private static extern IntPtr LoadLibrary(string file);
    }
#endif
}
