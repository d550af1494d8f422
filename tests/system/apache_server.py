"""Debian's Apache as a set of cameras: it supports Digest too, gives no type to a name without an extension, and
answers in the old protocol where told to."""

import base64
import hashlib
import os

from web_server import WebServer

REALM = "camera"
MODULES = (
    "mpm_event authn_core authn_file authz_core authz_user auth_basic auth_digest alias rewrite mime headers setenvif"
)
CONFIGURATION = """
ServerRoot {root}
ServerName camera
Listen 127.0.0.1:{port}
PidFile {root}/apache.pid
DefaultRuntimeDir {root}
ErrorLog {root}/error.log
{modules}
{user}
StartServers 1
KeepAlive On
# Each line of a log begins with the time at which its request arrived.
LogFormat "%{{begin:usec}}t %r %>s %{{Authorization}}i" plain
CustomLog {root}/access.log plain
# The headers that would ask for a picture only if it is new, the one that would keep the connection, whether
# the server would have kept it ("+"), and how many requests it served before.
LogFormat "%{{begin:usec}}t %{{If-Modified-Since}}i %{{If-None-Match}}i %{{Connection}}i %X %k" conditions
CustomLog {root}/conditions.log conditions
TypesConfig /dev/null
AddType image/jpeg .jpg .jpeg
AddType image/png .png
DocumentRoot {root}/www
<Directory {root}/www>
    Require all granted
</Directory>
<Location /private/>
    AuthType Basic
    AuthName {realm}
    AuthUserFile {root}/users
    Require valid-user
</Location>
<Location /digest/>
    AuthType Digest
    AuthName {realm}
    AuthUserFile {root}/digests
    Require valid-user
</Location>
SetEnvIf Request_URI "^/old/" downgrade-1.0 force-response-1.0
<Location /undated/>
    Header unset Last-Modified
</Location>
# As if the client had the picture, whichever it asks for.
<Location /unchanged/>
    RequestHeader set If-None-Match "*"
</Location>
Redirect 302 /moved.jpg /cam/0.jpg
Redirect 301 /moved-away.png /snap/1
Redirect 302 /to-private.png http://127.0.0.1:{port}/private/2.png
RewriteEngine On
RewriteRule ^/round/(\\d+)\\.png$ /round/$1.png [R=302,L]
"""


def digest_of(*words):
    return hashlib.md5(":".join(words).encode()).hexdigest()


class ApacheServer(WebServer):
    NAME = "apache2"

    def write_users(self, user, password):
        """Where they are found by those who the server becomes when started by root."""
        self.root.chmod(0o755)
        summed = base64.b64encode(hashlib.sha1(password.encode()).digest()).decode()
        (self.root / "users").write_text(f"{user}:{{SHA}}{summed}\n")
        (self.root / "digests").write_text(f"{user}:{REALM}:{digest_of(user, REALM, password)}\n")

    def command(self, program, port):
        user = "User #65534\nGroup #65534" if os.geteuid() == 0 else ""
        folder = "/usr/lib/apache2/modules"
        modules = "\n".join(f"LoadModule {name}_module {folder}/mod_{name}.so" for name in MODULES.split())
        configuration = self.root / "apache.conf"
        own = {"user": user, "root": self.root, "port": port, "modules": modules, "realm": REALM}
        configuration.write_text(CONFIGURATION.format(**own))
        return [program, "-D", "FOREGROUND", "-f", configuration]

    def conditions(self):
        """A line for each request: whatever would make its answer depend on an earlier one."""
        return self.log_lines("conditions.log")

    def log_lines(self, name):
        """In the order of the requests: each is logged by a thread of its own, once it is answered."""
        lines = [line.split(" ", 1) for line in super().log_lines(name)]
        return [line for _, line in sorted(lines, key=lambda timed: int(timed[0]))]
