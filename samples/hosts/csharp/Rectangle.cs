// A parameter view of a rectangle in a host in C#: the C interface as a Control of Windows Forms. Width and height are edited in
// the picture, the area follows. Negative values are refused. After every change the drawing is stored in a buffer and read back
// without a window. Build: csc /platform:x64 Rectangle.cs, or dotnet with UseWindowsForms; the DLLs lie beside the program.
using System;
using System.Globalization;
using System.Runtime.InteropServices;
using System.Text;
using System.Windows.Forms;

static class Nrv
{
    const string Dll = "NRVectorView.dll";
    public const int NRV_STRING_TEXT = 1, NRV_INT_PARM_BOX = 12;
    public const uint NRV_N_EDIT_ACCEPT = 0x4E0B, NRV_N_EDIT_STORED = 0x4E0D;

    public struct NrvPoint { public double x; public double y; }
    public struct NrvEventHeader { public IntPtr window; public UIntPtr identity; public uint code; }
    public struct NrvEvent
    {
        public NrvEventHeader header; public uint size; public int answer; public IntPtr source; public ulong id;
        public IntPtr ids; public IntPtr text; public IntPtr old_text; public double x; public double y;
        public int px; public int py; public uint count; public int kind; public int segment; public int reason; public IntPtr hdc;
    }

    const CallingConvention C = CallingConvention.Cdecl;
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvInitialize();
    [DllImport(Dll, CallingConvention = C, CharSet = CharSet.Unicode)] public static extern int NrvErrorText(int error, StringBuilder buffer, uint capacity, out uint length);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvAddPolyline(IntPtr handle, NrvPoint[] points, double[] bulges, uint count, int closed, uint color, out ulong id);
    [DllImport(Dll, CallingConvention = C, CharSet = CharSet.Unicode)] public static extern int NrvAddParm(IntPtr handle, double x, double y, string value, string name, double height, uint color, out ulong id);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvSetPoints(IntPtr handle, ulong id, NrvPoint[] points, uint count);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvSetInt(IntPtr handle, ulong id, int what, int value);
    [DllImport(Dll, CallingConvention = C, CharSet = CharSet.Unicode)] public static extern int NrvSetString(IntPtr handle, ulong id, int what, string value);
    [DllImport(Dll, CallingConvention = C, CharSet = CharSet.Unicode)] public static extern int NrvGetParmValue(IntPtr handle, string name, StringBuilder buffer, uint capacity, out uint length);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvSetStrictRefusal(IntPtr handle, int strict);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvZoomExtents(IntPtr handle);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvBeginEdit(IntPtr handle, ulong id);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvSaveBuffer(IntPtr handle, byte[] buffer, uint capacity, out uint size);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvCreateDrawing(out IntPtr drawing);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvLoadBuffer(IntPtr handle, byte[] data, uint size, IntPtr load);
    [DllImport(Dll, CallingConvention = C)] public static extern int NrvFreeDrawing(IntPtr drawing);

    public static void Check(int result)
    {
        if (result == 0) return;
        var text = new StringBuilder(200);
        NrvErrorText(result, text, 200, out _);
        throw new InvalidOperationException(text.ToString());
    }
}

// The window of the class NRVectorParmView as a Control.
class RectangleView : Control
{
    ulong outline, width, height, area;

    protected override CreateParams CreateParams
    {
        get
        {
            CreateParams result = base.CreateParams;
            result.ClassName = "NRVectorParmView";
            return result;
        }
    }

    double Value(string name, IntPtr drawing)
    {
        var text = new StringBuilder(64);
        Nrv.Check(Nrv.NrvGetParmValue(drawing, name, text, 64, out _));
        return double.Parse(text.ToString(), CultureInfo.InvariantCulture);
    }

    public void Begin()
    {
        Nrv.Check(Nrv.NrvAddPolyline(Handle, new Nrv.NrvPoint[4], null, 4, 1, 0xFFFFFF, out outline));
        Nrv.Check(Nrv.NrvAddParm(Handle, 0, 0, "300", "width", 20, 0xFFFF00, out width));
        Nrv.Check(Nrv.NrvAddParm(Handle, 0, 0, "200", "height", 20, 0xFFFF00, out height));
        Nrv.Check(Nrv.NrvAddParm(Handle, 0, 0, "", "area", 20, 0x00C800, out area));
        Nrv.Check(Nrv.NrvSetInt(Handle, area, Nrv.NRV_INT_PARM_BOX, 0)); // a result: no edit box
        Follow();
        Nrv.Check(Nrv.NrvSetStrictRefusal(Handle, 1));
        Update();
        Nrv.Check(Nrv.NrvBeginEdit(Handle, width));
    }

    void Place(ulong id, params double[] at)
    {
        var points = new Nrv.NrvPoint[at.Length / 2];
        for (int i = 0; i < points.Length; ++i) { points[i].x = at[2 * i]; points[i].y = at[2 * i + 1]; }
        Nrv.Check(Nrv.NrvSetPoints(Handle, id, points, (uint)points.Length));
    }

    void Follow()
    {
        double w = Value("width", Handle), h = Value("height", Handle);
        Place(outline, 0, 0, w, 0, w, h, 0, h);
        Place(width, w / 2, -10);
        Place(height, w + 10, h / 2);
        Place(area, w / 2, h / 2);
        Nrv.Check(Nrv.NrvSetString(Handle, area, Nrv.NRV_STRING_TEXT, (w * h).ToString(CultureInfo.InvariantCulture)));
        Nrv.Check(Nrv.NrvZoomExtents(Handle));
    }

    // The parent hands WM_NOTIFY on; answers are written into the record.
    public void OnEvent(IntPtr record)
    {
        var e = Marshal.PtrToStructure<Nrv.NrvEvent>(record);
        string text = Marshal.PtrToStringUni(e.text);
        if (e.header.code == Nrv.NRV_N_EDIT_ACCEPT)
        {
            bool good = double.TryParse(text, NumberStyles.Float, CultureInfo.InvariantCulture, out double number) && number > 0;
            if (!good) Console.WriteLine($"refused: {text} of {(e.id == width ? "width" : "height")}");
            Marshal.WriteInt32(record, (int)Marshal.OffsetOf<Nrv.NrvEvent>("answer"), good ? 1 : 0);
        }
        else if (e.header.code == Nrv.NRV_N_EDIT_STORED && text != Marshal.PtrToStringUni(e.old_text))
        {
            Follow();
            Nrv.Check(Nrv.NrvSaveBuffer(Handle, null, 0, out uint size));
            var bytes = new byte[size];
            Nrv.Check(Nrv.NrvSaveBuffer(Handle, bytes, size, out size));
            Nrv.Check(Nrv.NrvCreateDrawing(out IntPtr copy));
            Nrv.Check(Nrv.NrvLoadBuffer(copy, bytes, size, IntPtr.Zero));
            Console.WriteLine(FormattableString.Invariant($"width {Value("width", Handle)}, height {Value("height", Handle)}, area {Value("area", Handle)}; read back from {size} bytes: area {Value("area", copy)}"));
            Nrv.Check(Nrv.NrvFreeDrawing(copy));
        }
    }
}

class RectangleForm : Form
{
    readonly RectangleView view = new RectangleView { Dock = DockStyle.Fill };

    RectangleForm()
    {
        Nrv.Check(Nrv.NrvInitialize()); // before the view's window
        Text = "Rectangle";
        ClientSize = new System.Drawing.Size(640, 480);
        Controls.Add(view);
        Shown += (sender, e) => view.Begin();
    }

    protected override void WndProc(ref Message m)
    {
        if (m.Msg == 0x4E && Marshal.ReadIntPtr(m.LParam) == view.Handle) view.OnEvent(m.LParam); // WM_NOTIFY
        base.WndProc(ref m);
    }

    [STAThread]
    static void Main() => Application.Run(new RectangleForm());
}
