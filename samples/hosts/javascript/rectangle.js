// A parameter view of a rectangle in a JavaScript host: Node.js on Windows with the package koffi (npm install koffi), which
// calls C functions by their prototypes. Width and height are edited in the picture, the area follows. Negative values are
// refused. After every change the drawing is stored in a buffer and read back without a window.
//   node rectangle.js [FOLDER_OF_THE_DLLS]
'use strict';
const koffi = require('koffi');
const path = require('path');

const NRV_PARM_VIEW_CLASS = 'NRVectorParmView';
const NRV_STRING_TEXT = 1, NRV_INT_PARM_BOX = 12;
const NRV_N_EDIT_ACCEPT = 0x4E0B, NRV_N_EDIT_STORED = 0x4E0D;

const NrvPoint = koffi.struct('NrvPoint', { x: 'double', y: 'double' });
const NrvEventHeader = koffi.struct('NrvEventHeader', { window: 'void*', identity: 'uint64_t', code: 'uint32_t' });
const NrvEvent = koffi.struct('NrvEvent', {
  header: NrvEventHeader, size: 'uint32_t', answer: 'int32_t', source: 'void*', id: 'uint64_t', ids: 'void*', text: 'str16',
  old_text: 'str16', x: 'double', y: 'double', px: 'int32_t', py: 'int32_t', count: 'uint32_t', kind: 'int32_t',
  segment: 'int32_t', reason: 'int32_t', hdc: 'void*'
});
const NrvCallback = koffi.proto('void NrvCallback(void* event, void* user)');

const PROTOTYPES = [
  'int32_t NrvInitialize()',
  'int32_t NrvErrorText(int32_t error, _Out_ uint8_t* buffer, uint32_t capacity, _Out_ uint32_t* length)',
  'int32_t NrvAddPolyline(void* handle, const NrvPoint* points, const double* bulges, uint32_t count, int32_t closed, uint32_t color, _Out_ uint64_t* id)',
  'int32_t NrvAddParm(void* handle, double x, double y, str16 value, str16 name, double height, uint32_t color, _Out_ uint64_t* id)',
  'int32_t NrvSetPoints(void* handle, uint64_t id, const NrvPoint* points, uint32_t count)',
  'int32_t NrvSetInt(void* handle, uint64_t id, int32_t what, int32_t value)',
  'int32_t NrvSetString(void* handle, uint64_t id, int32_t what, str16 value)',
  'int32_t NrvGetParmValue(void* handle, str16 name, _Out_ uint8_t* buffer, uint32_t capacity, _Out_ uint32_t* length)',
  'int32_t NrvSetStrictRefusal(void* handle, int32_t strict)',
  'int32_t NrvZoomExtents(void* handle)',
  'int32_t NrvBeginEdit(void* handle, uint64_t id)',
  'int32_t NrvSetCallback(void* handle, NrvCallback* callback, void* user)',
  'int32_t NrvSaveBuffer(void* handle, _Out_ uint8_t* buffer, uint32_t capacity, _Out_ uint32_t* size)',
  'int32_t NrvCreateDrawing(_Out_ void** drawing)',
  'int32_t NrvLoadBuffer(void* handle, const uint8_t* data, uint32_t size, void* load)',
  'int32_t NrvFreeDrawing(void* drawing)'
];

// The functions by their names; an error number becomes an exception.
const library = koffi.load(path.join(process.argv[2] || __dirname, 'NRVectorView.dll'));
const nrv = {};
for (const prototype of PROTOTYPES) {
  const name = /Nrv\w+/.exec(prototype)[0];
  const call = library.func(prototype);
  nrv[name] = (...values) => {
    const error = call(...values);
    if (error !== 0) throw new Error(`${name}: error ${error}`);
  };
}

let view = null;
const ids = {};

function value(name, drawing) {
  const text = Buffer.alloc(128), length = [0];
  nrv.NrvGetParmValue(drawing, name, text, 64, length);
  return Number(text.toString('utf16le', 0, 2 * length[0]));
}

function add(call) {
  const id = [0];
  call(id);
  return id[0];
}

function begin() {
  const corner = { x: 0, y: 0 };
  ids.outline = add((id) => nrv.NrvAddPolyline(view, [corner, corner, corner, corner], null, 4, 1, 0xFFFFFF, id));
  ids.width = add((id) => nrv.NrvAddParm(view, 0, 0, '300', 'width', 20, 0xFFFF00, id));
  ids.height = add((id) => nrv.NrvAddParm(view, 0, 0, '200', 'height', 20, 0xFFFF00, id));
  ids.area = add((id) => nrv.NrvAddParm(view, 0, 0, '', 'area', 20, 0x00C800, id));
  nrv.NrvSetInt(view, ids.area, NRV_INT_PARM_BOX, 0); // a result: no edit box
  follow();
  nrv.NrvSetStrictRefusal(view, 1);
  nrv.NrvSetCallback(view, koffi.register(onEvent, koffi.pointer(NrvCallback)), null);
  nrv.NrvBeginEdit(view, ids.width);
}

function follow() {
  const w = value('width', view), h = value('height', view);
  nrv.NrvSetPoints(view, ids.outline, [{ x: 0, y: 0 }, { x: w, y: 0 }, { x: w, y: h }, { x: 0, y: h }], 4);
  nrv.NrvSetPoints(view, ids.width, [{ x: w / 2, y: -10 }], 1);
  nrv.NrvSetPoints(view, ids.height, [{ x: w + 10, y: h / 2 }], 1);
  nrv.NrvSetPoints(view, ids.area, [{ x: w / 2, y: h / 2 }], 1);
  nrv.NrvSetString(view, ids.area, NRV_STRING_TEXT, String(w * h));
  nrv.NrvZoomExtents(view);
}

function onEvent(record) {
  const event = koffi.decode(record, NrvEvent);
  if (event.header.code === NRV_N_EDIT_ACCEPT) {
    const good = Number(event.text) > 0;
    if (!good) console.log(`refused: ${event.text} of ${event.id === ids.width ? 'width' : 'height'}`);
    koffi.encode(record, koffi.offsetof(NrvEvent, 'answer'), 'int32_t', good ? 1 : 0);
  } else if (event.header.code === NRV_N_EDIT_STORED && event.text !== event.old_text) {
    follow();
    storeAndRead();
  }
}

function storeAndRead() {
  const size = [0], copy = [null];
  nrv.NrvSaveBuffer(view, null, 0, size);
  const bytes = Buffer.alloc(size[0]);
  nrv.NrvSaveBuffer(view, bytes, size[0], size);
  nrv.NrvCreateDrawing(copy);
  nrv.NrvLoadBuffer(copy[0], bytes, size[0], null);
  console.log(`width ${value('width', view)}, height ${value('height', view)}, area ${value('area', view)}; ` +
    `read back from ${size[0]} bytes: area ${value('area', copy[0])}`);
  nrv.NrvFreeDrawing(copy[0]);
}

// The window and the message loop of Windows. Without a window of its own the view is a top-level one.
const user32 = koffi.load('user32.dll');
const create = user32.func('void* __stdcall CreateWindowExW(uint32_t, str16, str16, uint32_t, int, int, int, int, void*, void*, void*, void*)');
const peek = user32.func('int __stdcall PeekMessageW(void*, void*, uint32_t, uint32_t, uint32_t)');
const translate = user32.func('int __stdcall TranslateMessage(void*)');
const dispatch = user32.func('intptr_t __stdcall DispatchMessageW(void*)');
const isWindow = user32.func('int __stdcall IsWindow(void*)');

nrv.NrvInitialize();
view = create(0, NRV_PARM_VIEW_CLASS, 'Rectangle', 0x10CF0000, 40, 40, 640, 480, null, null, null, null); // overlapped, visible
begin();
const message = Buffer.alloc(64);
(function pump() {
  while (peek(message, null, 0, 0, 1)) {
    translate(message);
    dispatch(message);
  }
  if (isWindow(view)) setTimeout(pump, 10);
})();
