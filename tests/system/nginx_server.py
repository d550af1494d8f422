"""Debian's nginx as a set of cameras."""

import os

from web_server import WebServer

CONFIGURATION = """
{user}
daemon off;
worker_processes 1;
pid {root}/nginx.pid;
error_log {root}/error.log;
events {{ worker_connections 4096; }}
http {{
    log_format plain '$request $status $http_authorization';
    access_log {root}/access.log plain;
    client_body_temp_path {root}/t1; proxy_temp_path {root}/t2; fastcgi_temp_path {root}/t3;
    uwsgi_temp_path {root}/t4; scgi_temp_path {root}/t5;
    types {{ image/jpeg jpg jpeg; image/png png; }}
    default_type application/octet-stream;
    server {{
        listen 127.0.0.1:{port};
        root {root}/www;
        location /private/ {{ auth_basic "camera"; auth_basic_user_file {root}/users; }}
        location /undated/ {{ if_modified_since off; etag off; add_header Last-Modified ""; }}
        location = /moved.jpg {{ return 302 /cam/0.jpg; }}
        location = /moved-away.png {{ return 301 /snap/1; }}
    }}
}}
"""


class NginxServer(WebServer):
    NAME = "nginx"

    def write_users(self, user, password):
        (self.root / "users").write_text(f"{user}:{{PLAIN}}{password}\n")

    def command(self, program, port):
        # Otherwise its workers would change to a user who may not read the temporary folder.
        user = "user root;" if os.geteuid() == 0 else ""
        configuration = self.root / "nginx.conf"
        configuration.write_text(CONFIGURATION.format(user=user, root=self.root, port=port))
        return [program, "-p", self.root, "-c", configuration, "-e", self.root / "error.log"]
