"""A site that has an icon."""
import http.server
import struct
import threading
import zlib

# An address of loopback that no other test serves on; local, so that it wants developer mode.
HOST = "127.83.0.1"


def picture_file(edge, color):
    """A PNG of one colour."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + bytes(color) * edge for _ in range(edge))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", edge, edge, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


class IconSite:
    """A site on the usual port where that may be used, for icons are asked for there. One at a time on a machine."""

    def __init__(self):
        site = self
        self.paths = []

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                site.paths.append(self.path)
                is_icon = self.path == "/apple-touch-icon.png"
                data = picture_file(96, (200, 40, 40)) if is_icon else b"<!doctype html><title>Desk</title>Desk"
                self.send_response(200 if is_icon or self.path == "/" else 404)
                self.send_header("Content-Type", "image/png" if is_icon else "text/html")
                self.send_header("Content-Length", str(len(data)))
                self.end_headers()
                self.wfile.write(data)

            def log_message(self, *_):
                pass

        try:
            self.server = http.server.ThreadingHTTPServer((HOST, 80), Handler)
            self.address = f"http://{HOST}/"
        except PermissionError:
            self.server = http.server.ThreadingHTTPServer((HOST, 0), Handler)
            self.address = f"http://{HOST}:{self.server.server_address[1]}/"
        self.has_usual_port = self.server.server_address[1] == 80
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def close(self):
        self.server.shutdown()
        self.server.server_close()
