"""A real mail server: Debian's exim as a process of the test, with its own configuration, spool and port. The mail
that it accepts goes to a mailbox file; nothing leaves the machine."""

import email
import email.policy
import os
import shutil
import subprocess
import tempfile
from pathlib import Path

from web_server import free_port, is_listening
from waiting import until

SUPPORT = Path(__file__).resolve().parent.parent / "support" / "data"
CERTIFICATE, KEY = SUPPORT / "loopback_certificate.pem", SUPPORT / "loopback_key.pem"
USER, PASSWORD = "anna", "sesame, open"
NOBODY = 65534

CONFIGURATION = """
exim_user = {user}
exim_group = {group}
{privilege}
never_users =
primary_hostname = mail.test
qualify_domain = mail.test
spool_directory = {root}/spool
log_file_path = {root}/log/%slog
pid_file_path = {root}/exim.pid
keep_environment =
timezone =
daemon_smtp_ports = {port}
{tls}
local_interfaces = 127.0.0.1
disable_ipv6 = true
acl_smtp_rcpt = check_rcpt
acl_smtp_data = accept

begin acl
check_rcpt:
  deny message = no such user here
       local_parts = nobody
  {condition}

begin routers
all:
  driver = accept
  transport = file

begin transports
file:
  driver = appendfile
  batch_max = 100
  file = {root}/mail/box
  user = {recipient}
  group = {recipient_group}
  envelope_to_add
  return_path_add

begin authenticators
plain:
  driver = plaintext
  public_name = PLAIN
  server_prompts = :
  server_condition = ${{if and {{{{eq{{$auth2}}{{{name}}}}}{{eq{{$auth3}}{{{password}}}}}}}}}
  server_set_id = $auth2
  {advertise}
"""

TLS = """
tls_certificate = {certificate}
tls_privatekey = {key}
tls_advertise_hosts = *
{on_connect}
"""


class EximServer:
    """encrypted: "never", "offered" (STARTTLS) or "always". with_login: only clients that have logged in may
    send."""

    def __init__(self, test, encrypted="never", with_login=False):
        self.root = Path(tempfile.mkdtemp(prefix="velmora-exim-"))
        test.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        for name in ("spool", "log", "mail"):
            (self.root / name).mkdir()
        self.root.chmod(0o755)
        self.port = free_port()
        self._write(encrypted, with_login)
        self._process = self._start()
        test.addCleanup(self._end)
        until(lambda: is_listening(self.port), 20, lambda: f"exim ({self.log()})")

    def _write(self, encrypted, with_login):
        user, group = os.geteuid(), os.getegid()
        # Exim never delivers as root.
        recipient, recipient_group = (NOBODY, NOBODY) if user == 0 else (user, group)
        os.chown(self.root / "mail", recipient, recipient_group)
        key = self.root / "key.pem"
        shutil.copy(KEY, key)
        key.chmod(0o600)
        on_connect = f"tls_on_connect_ports = {self.port}" if encrypted == "always" else ""
        tls = TLS.format(certificate=CERTIFICATE, key=key, on_connect=on_connect)
        text = CONFIGURATION.format(
            user=user,
            group=group,
            recipient=recipient,
            recipient_group=recipient_group,
            privilege="" if user == 0 else "deliver_drop_privilege",
            root=self.root,
            port=self.port,
            tls="tls_advertise_hosts =" if encrypted == "never" else tls,
            condition="accept authenticated = *" if with_login else "accept",
            name=USER,
            password=PASSWORD,
            advertise="" if encrypted == "never" else "server_advertise_condition = ${if def:tls_in_cipher}",
        )
        self._configuration = self.root / "exim.conf"
        self._configuration.write_text(text, encoding="utf-8")
        self._configuration.chmod(0o644)

    def _start(self):
        program = shutil.which("exim4", path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
        if program is None:
            raise RuntimeError("exim4 is not installed")
        # In the foreground, delivering each mail at once.
        command = [program, "-C", self._configuration, "-bdf", "-odi"]
        output = open(self.root / "output", "wb")
        with output:
            return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output)

    def _end(self):
        self._process.terminate()
        self._process.wait(20)

    def log(self):
        """The server's entire log."""
        files = [*sorted((self.root / "log").iterdir()), self.root / "output"]
        return "\n".join(f.read_text(encoding="utf-8", errors="replace") for f in files if f.is_file())

    def mails(self):
        """What was delivered, in order."""
        path = self.root / "mail" / "box"
        if not path.exists():
            return []
        # Each begins with a line added by the mailbox format.
        texts = path.read_bytes().split(b"\nFrom ") if path.stat().st_size else []
        return [email.message_from_bytes(text.split(b"\n", 1)[1], policy=email.policy.default) for text in texts]
