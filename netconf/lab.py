#!/usr/bin/python3
# A router for the lab: netconfd with the plug-in, behind an sshd on the loopback.
# usage: lab.py BUILD    runs it until Ctrl-C

import contextlib
import functools
import os
import pathlib
import pwd
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time

from ncclient import manager, operations, transport, xml_

ROOT = pathlib.Path(__file__).resolve().parent.parent
NETCONF = "urn:ietf:params:xml:ns:netconf:base:1.0"
SSHD = """ListenAddress 127.0.0.1:{port}
HostKey {folder}/key
AuthorizedKeysFile {folder}/key.pub
PidFile none
StrictModes no
Subsystem netconf /usr/sbin/netconf-subsystem --ncxserver-sockname={port}@{folder}/socket
"""
NETCONFD = """/usr/sbin/netconfd --module=l3-interface --module=router-vrrp --target=candidate
--modpath={root}/yang:/usr/share/yuma/modules --runpath={runpath} --startup={folder}/startup-cfg.xml
--port={port} --ncxserver-sockname={folder}/socket --superuser={user} --log-level=info"""


# A server, what it commits, and an sshd with a key of its own, which is the client's, too.
class Lab:
    def __init__(self, build, folder):
        self.library, self.folder = pathlib.Path(build).resolve() / "lib/vrrp-valid", folder
        self.command = self.library.parents[1] / "bin/vrrp-valid"
        self.user, self.server = pwd.getpwuid(os.getuid()).pw_name, None
        with socket.create_server(("127.0.0.1", 0)) as free:
            self.port = free.getsockname()[1]
        (folder / "startup-cfg.xml").write_text(f'<config xmlns="{NETCONF}"/>')
        (folder / "sshd_config").write_text(SSHD.format(**vars(self)))
        log = open(folder / "log", "a", encoding="utf-8")
        self.run = functools.partial(subprocess.Popen, stdout=log, stderr=log)
        self.run([self.command, "keygen", folder / "router.key"]).wait()
        self.run(["ssh-keygen", "-t", "ed25519", "-N", "", "-f", folder / "key"]).wait()
        if os.getuid() == 0:
            os.makedirs("/run/sshd", exist_ok=True)
        self.sshd = self.run(["/usr/sbin/sshd", "-D", "-e", "-f", folder / "sshd_config"])

    # Starts the server with what it committed; a client of it. Exits with the log when it fails.
    def start(self, plugin="libvrrp_valid.so", runpath=None):
        self.stop()
        os.environ["VRRP_VALID_PLUGIN"] = str(self.library / plugin)
        os.environ["VRRP_VALID_KEY_FILE"] = str(self.folder / "router.key")
        parts = {"root": ROOT, "runpath": runpath or self.library, **vars(self)}
        self.server = self.run(NETCONFD.format(**parts).split())
        for _ in range(100):
            if self.server.poll() is not None:
                break
            with contextlib.suppress(transport.TransportError):
                return self.connect()
            time.sleep(0.1)
        return sys.exit((self.folder / "log").read_text(encoding="utf-8"))

    def stop(self):
        if self.server is not None:
            self.server.kill()
            self.server.wait()
        (self.folder / "socket").unlink(missing_ok=True)

    def connect(self):
        login = {"username": self.user, "key_filename": str(self.folder / "key")}
        own = {"hostkey_verify": False, "allow_agent": False, "look_for_keys": False}
        client = manager.connect(host="127.0.0.1", port=self.port, **login, **own)
        client.raise_mode = operations.RaiseMode.NONE
        return client


# A lab that leaves nothing behind, also after Ctrl-C.
@contextlib.contextmanager
def lab_of(build):
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, signal.default_int_handler)
    # The server counts its commits in the home of its user, whatever folder it is given.
    yuma = pathlib.Path(pwd.getpwuid(os.getuid()).pw_dir, ".yuma")
    is_new = not yuma.exists()
    with tempfile.TemporaryDirectory(prefix="netconf-lab-") as folder:
        lab = Lab(build, pathlib.Path(folder))
        try:
            yield lab
        except KeyboardInterrupt:
            sys.exit(130)
        finally:
            signal.signal(signal.SIGINT, signal.SIG_IGN)
            lab.stop()
            lab.sshd.terminate()
            lab.sshd.wait()
            if is_new:
                shutil.rmtree(yuma, ignore_errors=True)


# The top-level nodes of a configuration, as XML.
def nodes_in(file):
    text = file.read_text(encoding="utf-8")
    if file.suffix == ".json":
        models = [f"{ROOT}/yang/{name}.yang" for name in ("l3-interface", "router-vrrp")]
        command = ["yanglint", "-t", "config", "-f", "xml", "-p", f"{ROOT}/yang", *models, file]
        text = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout
    return re.sub(r"<\?xml[^>]*>", "", text)


# The copy-config or edit-config of the candidate that has `nodes`.
def request(operation, nodes):
    config = f"<config>{nodes}</config>"
    config = f"<source>{config}</source>" if operation == "copy-config" else config
    parts = f"<target><candidate/></target>{config}"
    return xml_.to_ele(f'<{operation} xmlns="{NETCONF}">{parts}</{operation}>')


# Commits the candidate, with `changes`; what the server says of them.
def commit(client, *changes):
    replies = [client.dispatch(change) for change in changes]
    replies += [client.commit()] if all(reply.ok for reply in replies) else []
    client.discard_changes()
    return [error for reply in replies for error in reply.errors]


if __name__ == "__main__":
    with lab_of(sys.argv[1]) as lab:
        lab.start()
        print(f"ssh -p {lab.port} -i {lab.folder}/key {lab.user}@127.0.0.1 -s netconf", flush=True)
        signal.pause()
