#include "picture.h"

#include <wincodec.h>
#include <wrl/client.h>

#include <vector>

#include "../cpp/component.h"

namespace {

using Microsoft::WRL::ComPtr;

// The pixels of a window from top to bottom, three bytes each.
struct Pixels {
  UINT width;
  UINT height;
  UINT stride;
  std::vector<BYTE> bytes;
};

Pixels pixels_of(HWND window) {
  RECT frame = {};
  GetWindowRect(window, &frame);
  const LONG width = frame.right - frame.left;
  const LONG height = frame.bottom - frame.top;
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;  // from top to bottom
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 24;
  const UINT stride = (static_cast<UINT>(width) * 3 + 3) / 4 * 4;

  const HDC screen = GetWindowDC(window);
  const HDC memory = CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ former = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, width, height, screen, 0, 0, SRCCOPY);
  GdiFlush();
  const auto* first = static_cast<const BYTE*>(bits);
  Pixels pixels = {static_cast<UINT>(width), static_cast<UINT>(height), stride,
                   std::vector<BYTE>(first, first + stride * static_cast<UINT>(height))};
  SelectObject(memory, former);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(window, screen);
  return pixels;
}

}  // namespace

void save_picture(HWND window, const std::wstring& path) {
  Pixels pixels = pixels_of(window);
  const auto imaging = created<IWICImagingFactory>(CLSID_WICImagingFactory, IID_IWICImagingFactory);
  ComPtr<IWICStream> stream;
  ComPtr<IWICBitmapEncoder> encoder;
  ComPtr<IWICBitmapFrameEncode> frame;
  WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
  check(imaging->CreateStream(&stream));
  check(stream->InitializeFromFilename(path.c_str(), GENERIC_WRITE));
  check(imaging->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder));
  check(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache));
  check(encoder->CreateNewFrame(&frame, nullptr));
  check(frame->Initialize(nullptr));
  check(frame->SetSize(pixels.width, pixels.height));
  check(frame->SetPixelFormat(&format));
  check(frame->WritePixels(pixels.height, pixels.stride, static_cast<UINT>(pixels.bytes.size()), pixels.bytes.data()));
  check(frame->Commit());
  check(encoder->Commit());
}
