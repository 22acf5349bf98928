"""This module has real servers for tests. A test starts and stops clickhouse-server on the loopback interface, in a
private folder, on free ports. Several servers are the shards of one cluster."""

import pathlib
import shutil
import socket
import subprocess
import time
import urllib.error
import urllib.parse
import urllib.request

SERVER = shutil.which("clickhouse-server", path="/usr/sbin:/usr/bin")
SCHEMA = pathlib.Path(__file__).resolve().parents[2] / "share/ckscribe/clickhouse"

# An answer takes at most this many seconds.
LONGEST_ANSWER = 300

CONFIGURATION = """<yandex>
  <logger><level>warning</level><log>{folder}/server.log</log><errorlog>{folder}/errors.log</errorlog></logger>
  <listen_host>127.0.0.1</listen_host>
  <http_port>{http}</http_port>
  <tcp_port>{native}</tcp_port>
  <path>{folder}/data/</path>
  <tmp_path>{folder}/tmp/</tmp_path>
  <users_config>{folder}/users.xml</users_config>
  <default_profile>default</default_profile>
  <default_database>default</default_database>
  <mark_cache_size>67108864</mark_cache_size>
  <remote_servers><ckscribe>{shards}</ckscribe></remote_servers>
</yandex>
"""
USERS = """<yandex>
  <profiles><default></default></profiles>
  <users><default><password></password><networks><ip>127.0.0.1</ip></networks>
    <profile>default</profile><quota>default</quota></default></users>
  <quotas><default></default></quotas>
</yandex>
"""


def free_ports(count):
    sockets = [socket.socket() for _ in range(count)]
    for one in sockets:
        one.bind(("127.0.0.1", 0))
    ports = [one.getsockname()[1] for one in sockets]
    for one in sockets:
        one.close()
    return ports


class Server:
    def __init__(self, folder, http, native, shards):
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(parents=True)
        self.port = http
        (self.folder / "users.xml").write_text(USERS)
        configuration = self.folder / "config.xml"
        configuration.write_text(CONFIGURATION.format(folder=self.folder, http=http, native=native, shards="".join(
            f"<shard><replica><host>127.0.0.1</host><port>{port}</port></replica></shard>" for port in shards)))
        # The server ends with the test, however the test ends.
        self.process = subprocess.Popen(["setpriv", "--pdeathsig", "KILL", SERVER, f"--config-file={configuration}"],
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, cwd=self.folder)

    def wait(self):
        """Waits for the server, and returns whether it answers."""
        for _ in range(600):
            if self.process.poll() is not None:
                return False
            try:
                return self.ask("SELECT 1") == "1\n"
            except urllib.error.URLError:
                time.sleep(0.1)
        return False

    def stop(self):
        self.process.terminate()
        try:
            self.process.wait(30)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def url(self, database="default"):
        return f"http://127.0.0.1:{self.port}/?database={database}"

    def ask(self, query, database="default", **settings):
        url = self.url(database) + "".join(f"&{key}={urllib.parse.quote(str(value))}" for key, value in settings.items())
        try:
            with urllib.request.urlopen(url, query.encode(), timeout=LONGEST_ANSWER) as answer:
                return answer.read().decode()
        except urllib.error.HTTPError as error:
            raise AssertionError(error.read().decode()) from None

    def rows(self, query, database="default"):
        """Returns the rows of an answer, each as a list."""
        import json
        return json.loads(self.ask(query + " FORMAT JSONCompact", database, output_format_json_quote_64bit_integers=0))["data"]


def start_servers(folder, count):
    """Starts the servers of one cluster and returns them. A port that somebody else took meanwhile is no failure."""
    for attempt in range(5):
        ports = free_ports(2 * count)
        servers = [Server(pathlib.Path(folder, f"try-{attempt}-server-{i}"), ports[i], ports[count + i], ports[count:])
                   for i in range(count)]
        if all([server.wait() for server in servers]):
            return servers
        for server in servers:
            server.stop()
    raise RuntimeError("no server of ClickHouse starts")


def make_tables(servers, database, is_spread):
    """Makes a database with the tables on each server. If `is_spread` is true, it has calls_all, too, which spreads calls
    over all servers."""
    for server in servers:
        server.ask(f"CREATE DATABASE {database}")
        for name in ("calls", "calls_by_minute") + (("calls_all",) if is_spread else ()):
            server.ask((SCHEMA / f"{name}.sql").read_text(), database)


def query_text(name, table, since=0):
    text = (SCHEMA / "queries" / f"{name}.sql").read_text()
    return text.replace("{table:Identifier}", table).replace("{since:UInt64}", str(since))
