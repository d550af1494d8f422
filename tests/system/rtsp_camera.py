"""A camera that speaks RTSP, for the tests: Debian's GStreamer server with a moving test picture. Prints its port.
Arguments: user and password, if it should ask for them."""

import sys

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstRtsp", "1.0")
gi.require_version("GstRtspServer", "1.0")
from gi.repository import GLib, Gst, GstRtsp, GstRtspServer  # noqa: E402

PICTURE = (
    "( videotestsrc is-live=true ! video/x-raw,format=I420,width=320,height=240,framerate=10/1 "
    "! jpegenc ! rtpjpegpay name=pay0 pt=26 )"
)


def ask_for_login(server, factory, user, password):
    auth = GstRtspServer.RTSPAuth()
    auth.set_supported_methods(GstRtsp.RTSPAuthMethod.DIGEST)  # Digest; without the password, clients are turned away
    token = GstRtspServer.RTSPToken()
    token.set_string("media.factory.role", "user")
    auth.add_digest(user, password, token)
    server.set_auth(auth)
    permissions = GstRtspServer.RTSPPermissions()
    permissions.add_permission_for_role("user", "media.factory.access", True)
    permissions.add_permission_for_role("user", "media.factory.construct", True)
    factory.set_permissions(permissions)


def main():
    Gst.init(None)
    server = GstRtspServer.RTSPServer()
    server.set_address("127.0.0.1")
    server.set_service("0")
    factory = GstRtspServer.RTSPMediaFactory()
    factory.set_launch(PICTURE)
    factory.set_shared(True)
    if len(sys.argv) > 2:
        ask_for_login(server, factory, sys.argv[1], sys.argv[2])
    server.get_mount_points().add_factory("/live", factory)
    server.attach(None)
    print(server.get_bound_port(), flush=True)
    GLib.MainLoop().run()


main()
